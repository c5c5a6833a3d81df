// Project files made to make the reader spend: archives that lie about their
// member, grid dumps that say something twice or go on after their end.
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <zip.h>

#include "sheet/files/GridArchive.h"

namespace synthara::sheet {
namespace {

std::vector<std::uint8_t> Packed(std::string_view text) {
    std::vector<std::uint8_t> bytes;
    EXPECT_TRUE(PackMember("C01x.", text, bytes).ok);
    return bytes;
}

void PutLittleEndian32(std::vector<std::uint8_t>& bytes, std::size_t at, std::uint32_t value) {
    for (int k = 0; k < 4; ++k)
        bytes[at + static_cast<std::size_t>(k)] = static_cast<std::uint8_t>(value >> (8 * k));
}

std::size_t Find(const std::vector<std::uint8_t>& bytes, std::string_view signature) {
    const std::string_view all(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const std::size_t at = all.find(signature);
    EXPECT_NE(at, std::string_view::npos);
    return at;
}

// Writes `size` as the member's unpacked size in both places an archive
// keeps it (its local header and the central directory), so the two agree.
void DeclareSize(std::vector<std::uint8_t>& archive, std::uint32_t size) {
    PutLittleEndian32(archive, Find(archive, std::string_view("PK\3\4", 4)) + 22, size);
    PutLittleEndian32(archive, Find(archive, std::string_view("PK\1\2", 4)) + 24, size);
}

// An archive holding `text` twice, under two names.
std::vector<std::uint8_t> TwoMembers(const std::string& text) {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* buffer = zip_source_buffer_create(nullptr, 0, 0, &error);
    zip_t* archive = zip_open_from_source(buffer, ZIP_TRUNCATE, &error);
    zip_source_keep(buffer);
    for (const char* name : {"C01x.", "C01y."})
        zip_file_add(archive, name, zip_source_buffer(archive, text.data(), text.size(), 0), 0);
    EXPECT_EQ(zip_close(archive), 0);
    zip_stat_t stat;
    EXPECT_EQ(zip_source_open(buffer), 0);
    EXPECT_EQ(zip_source_stat(buffer, &stat), 0);
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(stat.size));
    EXPECT_EQ(zip_source_read(buffer, bytes.data(), bytes.size()),
              static_cast<zip_int64_t>(bytes.size()));
    zip_source_close(buffer);
    zip_source_free(buffer);
    return bytes;
}

// A sound grid dump of a 2 x 1 sheet, `extra` inserted before its end.
std::string Dump(std::string_view extra = "", std::string_view after = "") {
    return std::string(R"({"format":"synthara-grid","version":1,"rows":2,"cols":1,"fixedRows":0,)"
                       R"("fixedCols":0,"rowHeights":[[2,250]],"rowHidden":[[2,0]],"columns":[)"
                       R"({"width":9,"hidden":false,"align":"left","cells":[[0,"a"]]}])") +
           std::string(extra) + "}" + std::string(after);
}

TEST(HostileProjectFile, DeclaredSizesAreNeverTrusted) {
    // A member that claims 4 GB in a file of a few hundred bytes is refused
    // before anything is inflated; the same claim within the sheet bounds but
    // beyond what the archive's bytes can inflate to is refused too.
    std::vector<std::uint8_t> huge = Packed(Dump());
    DeclareSize(huge, 0xFFFFFFF0u);
    Grid g;
    EXPECT_EQ(UnpackGrid(huge, g).message, "The file is damaged or incomplete.");
    ReadLimits small;
    small.maxMemberBytes = 1000;
    EXPECT_EQ(UnpackGrid(huge, g, small).message, "The sheet in the file is too large.");

    // A member that claims less than it holds is read as far as the bound,
    // whatever it claimed.
    std::string padded = Dump();
    padded.insert(padded.size() - 1, std::string(4000, ' '));
    std::vector<std::uint8_t> understated = Packed(padded);
    DeclareSize(understated, 10);
    EXPECT_TRUE(UnpackGrid(understated, g).ok);
    EXPECT_EQ(UnpackGrid(understated, g, small).message, "The sheet in the file is too large.");
}

TEST(HostileProjectFile, ADumpThatRepeatsAnEntryOrRunsOnIsRefused) {
    const std::string notASheet = "The file is not a readable sheet: ";
    const struct {
        const char* name;
        std::string text;
        std::string why;
    } cases[] = {
        {"sound", Dump(), ""},
        {"blanks after the end", Dump("", " \n"), ""},
        {"rows twice", Dump(R"(,"rows":2)"), notASheet + "the entry \"rows\" appears twice."},
        {"format twice", Dump(R"(,"format":"synthara-grid")"),
         notASheet + "the entry \"format\" appears twice."},
        {"columns twice", Dump(R"(,"columns":[])"),
         notASheet + "the entry \"columns\" appears twice."},
        {"hidden rows twice", Dump(R"(,"rowHidden":[[2,1]])"),
         notASheet + "the entry \"rowHidden\" appears twice."},
        {"a column's cells twice",
         R"({"format":"synthara-grid","version":1,"rows":2,"cols":1,"fixedRows":0,)"
         R"("fixedCols":0,"rowHeights":[[2,250]],"rowHidden":[[2,0]],"columns":[)"
         R"({"width":9,"hidden":false,"align":"left","cells":[[0,"a"]],"cells":[[1,"b"]]}]})",
         notASheet + "a column's \"cells\" appears twice."},
        {"a second sheet after the end", Dump("", Dump()),
         notASheet + "there is more after its end."},
        {"text after the end", Dump("", "x"), notASheet + "there is more after its end."},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Grid direct, packed;
        const FileResult decoded = DecodeGrid(c.text, direct);
        const FileResult unpacked = UnpackGrid(Packed(c.text), packed);
        EXPECT_EQ(decoded.message, c.why);
        EXPECT_EQ(unpacked.message, c.why);
        EXPECT_EQ(decoded.ok, c.why.empty());
        EXPECT_EQ(unpacked.ok, c.why.empty());
    }
}

TEST(HostileProjectFile, AnArchiveWithTwoMembersIsRefused) {
    // Two members side by side, as a hand-made archive could hold them: the
    // reader can't tell which is the sheet.
    const std::vector<std::uint8_t> one = Packed(Dump());
    Grid g;
    ASSERT_TRUE(UnpackGrid(one, g).ok);
    const std::vector<std::uint8_t> two = TwoMembers(Dump());
    EXPECT_EQ(UnpackGrid(two, g).message,
              "The file is not a readable sheet: it holds more than one member.");
}

TEST(HostileProjectFile, ColumnsCostNothingUntilTheirRecordsCome) {
    // A dump that declares many more columns than it holds is refused, and
    // the columns it never held were never made.
    const std::string text =
        R"({"format":"synthara-grid","version":1,"rows":1000,"cols":20000,"fixedRows":0,)"
        R"("fixedCols":0,"rowHeights":[[1000,250]],"rowHidden":[[1000,0]],"columns":[)"
        R"({"width":9,"hidden":false,"align":"left","cells":[]}]})";
    Grid g;
    EXPECT_EQ(DecodeGrid(text, g).message,
              "The file is not a readable sheet: the columns don't match the number of columns.");
    EXPECT_EQ(g.Cols(), 1);
}

}  // namespace
}  // namespace synthara::sheet
