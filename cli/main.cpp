#include <iostream>

#include "cli/App.h"

int main(int argc, char** argv) {
    return synthara::cli::Run(argc, argv, std::cout, std::cerr);
}
