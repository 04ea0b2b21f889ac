// SPDX-License-Identifier: MIT

// What the check of the hardening must find fault with: linked in every way that programs of ours
// are not.
int main() {}
