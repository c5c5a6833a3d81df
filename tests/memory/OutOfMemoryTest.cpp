// A file too large for memory is refused in the program's words, never with
// a library's. Allocations above a bound fail here while a test says so, as
// they would on a machine without the memory.
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <new>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cli/App.h"
#include "sheet/files/GridArchive.h"
#include "sheet/files/Project.h"
#include "sheet/import/DelimitedText.h"

namespace {

std::size_t failAbove = 0;  // 0: every allocation is served

}  // namespace

void* operator new(std::size_t size) {
    if (failAbove != 0 && size > failAbove) throw std::bad_alloc();
    if (void* p = std::malloc(size == 0 ? 1 : size)) return p;
    throw std::bad_alloc();
}
void operator delete(void* p) noexcept {
    std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
    std::free(p);
}

namespace synthara {
namespace {

constexpr std::size_t kBound = std::size_t{1} << 20;

struct Tight {
    Tight() { failAbove = kBound; }
    ~Tight() { failAbove = 0; }
};

std::string TempPath(const std::string& name) {
    return ::testing::TempDir() + "OutOfMemory-" + name;
}

int RunCli(std::vector<std::string> args, std::string& err) {
    std::ostringstream out, errors;
    int status = 0;
    {
        Tight tight;
        status = cli::Run(args, out, errors);
    }
    err = errors.str();
    return status;
}

TEST(OutOfMemory, ADelimitedFileSaysSo) {
    const std::string path = TempPath("big.csv");
    std::ofstream(path) << "Study name\n" << std::string(2 * kBound, 'x') << '\n';
    {
        Tight tight;
        const auto read = sheet::ReadDelimitedFile(path);
        failAbove = 0;
        EXPECT_FALSE(read.ok);
        EXPECT_EQ(read.message, sheet::NotEnoughMemoryToRead);
    }
    std::string err;
    EXPECT_EQ(RunCli({"compute", path, "--format", "Cohort 2x2 (Events)"}, err), cli::ExitRefused);
    EXPECT_EQ(err, path + ": There is not enough memory to read the file.\n");
}

TEST(OutOfMemory, AProjectFileSaysSo) {
    // A small file whose one cell unpacks to more than memory holds.
    sheet::Grid grid;
    grid.SetRows(2);
    grid.SetCols(2);
    grid.SetText(1, 1, std::string(2 * kBound, 'x'));
    const std::string path = TempPath("big.syn");
    ASSERT_TRUE(sheet::WriteGridFile(grid, path).ok);
    {
        Tight tight;
        sheet::Grid back;
        const sheet::FileResult read = sheet::ReadGridFile(path, back);
        failAbove = 0;
        EXPECT_EQ(read.message, sheet::NotEnoughMemoryToRead);
    }
    std::string err;
    EXPECT_EQ(RunCli({"compute", path}, err), cli::ExitRefused);
    EXPECT_EQ(err, path + ": There is not enough memory to read the file.\n");
}

}  // namespace
}  // namespace synthara
