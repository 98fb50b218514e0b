// SPDX-License-Identifier: MIT
// What does nothing: as a program and as a shared library.
int main() { return 0; }
