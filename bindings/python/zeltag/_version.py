# SPDX-License-Identifier: MIT
"""The version of this package: that of the library it comes with."""

__version__ = "7.6.4"
