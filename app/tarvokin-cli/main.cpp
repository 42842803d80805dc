#include <cstdio>
int main() { std::fprintf(stderr, "tarvokin-cli: commands are being written\n"); return 1; }
