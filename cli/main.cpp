#include <malloc.h>

#include <iostream>

#include "cli/App.h"
#include "cli/CommandSupport.h"

int main(int argc, char** argv) {
    // The working table's columns and the grid's page tables are blocks of
    // megabytes that are freed and made again as a run goes: kept in the
    // heap, a freed block is used again instead of being returned to the
    // system and faulted in afresh.
    mallopt(M_MMAP_THRESHOLD, 32 << 20);
    mallopt(M_TRIM_THRESHOLD, 256 << 20);
#if defined(__SANITIZE_ADDRESS__)
    // The leak check must see every object freed: text reached only
    // through a cell's tagged bits is invisible to it.
    synthara::cli::LeaveToExit(false);
#else
    synthara::cli::LeaveToExit(true);
#endif
    return synthara::cli::Run(argc, argv, std::cout, std::cerr);
}
