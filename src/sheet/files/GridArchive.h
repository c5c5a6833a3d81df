#pragma once
// The stored form of a grid: a one-member ZIP archive whose member holds the
// whole grid as JSON. The member carries the shape, every non-empty cell in
// place (typed text as text, numbers as numbers that read back to the same
// double), each column's key, width, visibility, alignment and number format,
// each row's height and visibility, all in physical order, and a marker with
// a version so that later versions can read older files.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sheet/files/Project.h"
#include "sheet/grid/Grid.h"

namespace synthara::sheet {

inline constexpr std::string_view GridFormatMarker = "synthara-grid";
inline constexpr int GridFormatVersion = 1;

// Bounds a reader holds a file to before it allocates anything, so that a
// hostile file can't ask for more memory than a real project needs.
struct ReadLimits {
    std::uint64_t maxMemberBytes = std::uint64_t{4} << 30;  // unpacked member
    // A column costs a pointer per page of rows before any cell is read, so
    // the shape is bounded by pages of rows times columns; cells themselves
    // cost only where the file holds them.
    std::uint64_t maxPages = std::uint64_t{1} << 22;
    int maxRows = 1 << 24;
    int maxCols = 1 << 16;
};

// Data cells a save may leave out because opening the file makes them again:
// those of the marked rows in the marked columns. Empty vectors leave out
// nothing.
struct DerivedCells {
    std::vector<bool> cols;
    std::vector<bool> rows;
    bool Has(int row, int col) const {
        return col >= 0 && row >= 0 && static_cast<std::size_t>(col) < cols.size() &&
               static_cast<std::size_t>(row) < rows.size() && cols[static_cast<std::size_t>(col)] &&
               rows[static_cast<std::size_t>(row)];
    }
};

// The grid as the member's JSON text, without the derived cells.
std::string EncodeGrid(const Grid& grid, const DerivedCells& derived = {});
// Fills `out` from the member's text. On failure `out` is unspecified and the
// result says why.
FileResult DecodeGrid(std::string_view text, Grid& out, const ReadLimits& limits = {});
// The same from a stream, read as far as the grid's end and then to the
// stream's end: anything but blanks after the grid is refused.
FileResult DecodeGrid(std::istream& text, Grid& out, const ReadLimits& limits = {});

// The whole archive in memory, with one member under `memberName`.
FileResult PackGrid(const Grid& grid, std::string_view memberName, std::vector<std::uint8_t>& out,
                    const DerivedCells& derived = {});
// An archive with one member holding `text`.
FileResult PackMember(std::string_view memberName, std::string_view text,
                      std::vector<std::uint8_t>& out);
// Reads the archive's one member, whatever its name. The member is inflated
// as it is read and never beyond what the archive's size allows; an archive
// with more than one member is refused.
FileResult UnpackGrid(std::span<const std::uint8_t> archive, Grid& out,
                      const ReadLimits& limits = {});

// The member's name for a file: the marker "C01" and the file's name less its
// extension's three letters, so "trial.syn" holds "C01trial.".
std::string MemberNameFor(const std::filesystem::path& path);

// Writes the archive to a temporary file beside `path` and renames it over
// `path` only when every byte was written, so a failed save leaves the
// previous file as it was.
FileResult WriteGridFile(const Grid& grid, const std::filesystem::path& path,
                         const DerivedCells& derived = {});
// Reads a file written by WriteGridFile into `out`; `out` is untouched on failure.
FileResult ReadGridFile(const std::filesystem::path& path, Grid& out,
                        const ReadLimits& limits = {});

}  // namespace synthara::sheet
