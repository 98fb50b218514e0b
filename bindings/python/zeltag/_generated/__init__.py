# SPDX-License-Identifier: MIT
"""What is made of the library's tables and headers.

Made by scripts/generate_python.py of them; change those."""
