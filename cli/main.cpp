#include <iostream>

#include "cli/App.h"
#include "cli/CommandSupport.h"

int main(int argc, char** argv) {
    synthara::cli::LeaveToExit(true);
    return synthara::cli::Run(argc, argv, std::cout, std::cerr);
}
