// SPDX-License-Identifier: MIT
// The headers that are compiled with it count; see CMakeLists.txt.

int main() {
    return 0;
}
