# SPDX-License-Identifier: MIT
# Prints the card at each reader.
import zeltag

for reader in zeltag.readers():
    print(reader.name, reader.read())
