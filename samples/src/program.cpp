// SPDX-License-Identifier: Apache-2.0
// A program of the sample installations: prints what it is started with.
#include <cstdio>

int main(int argc, char** argv) {
  for (int i = 0; i < argc; ++i)
    std::printf("%s\n", argv[i]);
}
