#include <iostream>

#include "console/quomc.h"

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    return quom::quomc_main({argv + 1, argv + argc}, std::cin, std::cout, std::cerr);
}
