#include "sheet/files/GridArchive.h"

#include <zip.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <istream>
#include <limits>
#include <memory>
#include <new>
#include <streambuf>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace synthara::sheet {

namespace {

struct ZipCloser {
    void operator()(zip_t* z) const { zip_discard(z); }
};
using ZipPtr = std::unique_ptr<zip_t, ZipCloser>;

struct SourceFree {
    void operator()(zip_source_t* s) const { zip_source_free(s); }
};
using SourcePtr = std::unique_ptr<zip_source_t, SourceFree>;

struct FileCloser {
    void operator()(zip_file_t* f) const { zip_fclose(f); }
};
using FilePtr = std::unique_ptr<zip_file_t, FileCloser>;

std::string ZipMessage(zip_error_t* error) {
    return zip_error_strerror(error);
}

FileResult Ok() {
    return {true, {}};
}

FileResult Failed(std::string why) {
    return {false, std::move(why)};
}

bool WriteAll(int fd, const std::uint8_t* data, std::size_t size) {
    while (size > 0) {
        const ssize_t n = ::write(fd, data, size);
        if (n < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        data += n;
        size -= static_cast<std::size_t>(n);
    }
    return true;
}

// Deflate turns at most 1032 bytes out of each byte it reads, so a member can
// never honestly unpack to more than that many times the archive's own size.
// Stored members are smaller still, and other methods (which can expand
// without such a bound) are refused. Whatever the archive declares, the
// reader inflates no further than this, or than the sheet size a reader
// accepts, whichever is less.
constexpr std::uint64_t kMaxDeflateRatio = 1032;

std::uint64_t MostInflated(std::size_t archiveBytes) {
    const std::uint64_t bytes = archiveBytes;
    constexpr std::uint64_t kMax = std::numeric_limits<std::uint64_t>::max();
    return bytes > kMax / kMaxDeflateRatio ? kMax : bytes * kMaxDeflateRatio;
}

// The member's text, inflated 64 KB at a time as the grid reader asks for
// it, so that what is held at once is one chunk, whatever the archive says.
// It stops at the cap and remembers why it stopped.
class MemberBuffer final : public std::streambuf {
  public:
    enum class Stop { None, Damaged, TooLarge };

    MemberBuffer(zip_file_t* file, std::uint64_t cap, std::uint64_t honestCap)
        : file_(file), cap_(cap), honestCap_(honestCap), chunk_(std::size_t{1} << 16) {}

    Stop Stopped() const { return stop_; }

  protected:
    int_type underflow() override {
        if (gptr() < egptr()) return traits_type::to_int_type(*gptr());
        if (stop_ != Stop::None || ended_) return traits_type::eof();
        const zip_int64_t n = zip_fread(file_, chunk_.data(), chunk_.size());
        if (n < 0) {
            // The checksum or the compressed data is wrong.
            stop_ = Stop::Damaged;
            return traits_type::eof();
        }
        if (n == 0) {
            ended_ = true;
            return traits_type::eof();
        }
        inflated_ += static_cast<std::uint64_t>(n);
        if (inflated_ > cap_) {
            stop_ = inflated_ > honestCap_ ? Stop::Damaged : Stop::TooLarge;
            return traits_type::eof();
        }
        setg(chunk_.data(), chunk_.data(), chunk_.data() + n);
        return traits_type::to_int_type(*gptr());
    }

  private:
    zip_file_t* file_;
    std::uint64_t cap_, honestCap_;
    std::vector<char> chunk_;
    std::uint64_t inflated_ = 0;
    bool ended_ = false;
    Stop stop_ = Stop::None;
};

FileResult UnpackMember(std::span<const std::uint8_t> archive, Grid& out,
                        const ReadLimits& limits) {
    if (archive.empty()) return Failed("The file is empty.");
    zip_error_t error;
    zip_error_init(&error);
    SourcePtr source(zip_source_buffer_create(archive.data(), archive.size(), 0, &error));
    if (!source) return Failed("The file could not be read.");
    ZipPtr zip(zip_open_from_source(source.get(), ZIP_RDONLY | ZIP_CHECKCONS, &error));
    if (!zip) {
        const int code = zip_error_code_zip(&error);
        zip_error_fini(&error);
        // An archive that lost its end still starts like one.
        const bool startsLikeArchive = archive.size() >= 4 && archive[0] == 'P' &&
                                       archive[1] == 'K' && archive[2] == 3 && archive[3] == 4;
        return Failed(code == ZIP_ER_NOZIP && !startsLikeArchive
                          ? "The file is not a project file."
                          : "The file is damaged or incomplete.");
    }
    source.release();  // the archive owns it now
    const zip_int64_t members = zip_get_num_entries(zip.get(), 0);
    if (members < 1) return Failed("The file holds no sheet.");
    if (members > 1)
        return Failed("The file is not a readable sheet: it holds more than one member.");

    zip_stat_t stat;
    zip_stat_init(&stat);
    if (zip_stat_index(zip.get(), 0, 0, &stat) != 0 || (stat.valid & ZIP_STAT_SIZE) == 0 ||
        (stat.valid & ZIP_STAT_COMP_METHOD) == 0)
        return Failed("The file is damaged or incomplete.");
    if (stat.comp_method != ZIP_CM_STORE && stat.comp_method != ZIP_CM_DEFLATE)
        return Failed("The file is not a project file.");
    // The declared size only turns a file away early; it is never what the
    // reader allocates by.
    const std::uint64_t honestCap = MostInflated(archive.size());
    if (stat.size > limits.maxMemberBytes) return Failed("The sheet in the file is too large.");
    if (stat.size > honestCap) return Failed("The file is damaged or incomplete.");
    FilePtr member(zip_fopen_index(zip.get(), 0, 0));
    if (!member) return Failed("The file is damaged or incomplete.");

    MemberBuffer buffer(member.get(), std::min(honestCap, limits.maxMemberBytes), honestCap);
    std::istream text(&buffer);
    // The grid reader takes the text to its very end, so the archive checks
    // the member's checksum before a grid is accepted.
    const FileResult decoded = DecodeGrid(text, out, limits);
    switch (buffer.Stopped()) {
        case MemberBuffer::Stop::None:
            return decoded;
        case MemberBuffer::Stop::TooLarge:
            return Failed("The sheet in the file is too large.");
        case MemberBuffer::Stop::Damaged:
            break;
    }
    return Failed("The file is damaged or incomplete.");
}

}  // namespace

std::string MemberNameFor(const std::filesystem::path& path) {
    std::string name = path.filename().string();
    name.resize(name.size() >= 3 ? name.size() - 3 : 0);
    return "C01" + name;
}

FileResult PackGrid(const Grid& grid, std::string_view memberName, std::vector<std::uint8_t>& out,
                    const DerivedCells& derived) {
    std::string text;
    try {
        text = EncodeGrid(grid, derived);
    } catch (const std::bad_alloc&) {
        return Failed("There is not enough memory to write the file.");
    }
    return PackMember(memberName, text, out);
}

FileResult PackMember(std::string_view memberName, std::string_view text,
                      std::vector<std::uint8_t>& out) {
    zip_error_t error;
    zip_error_init(&error);
    SourcePtr buffer(zip_source_buffer_create(nullptr, 0, 0, &error));
    if (!buffer) return Failed("The archive could not be made: " + ZipMessage(&error) + ".");
    ZipPtr archive(zip_open_from_source(buffer.get(), ZIP_TRUNCATE, &error));
    if (!archive) return Failed("The archive could not be made: " + ZipMessage(&error) + ".");
    zip_source_keep(buffer.get());  // the archive takes a reference; ours reads the result

    zip_source_t* member = zip_source_buffer(archive.get(), text.data(), text.size(), 0);
    if (member == nullptr)
        return Failed("The archive could not be made: " + std::string(zip_strerror(archive.get())));
    const std::string name(memberName);
    const zip_int64_t index = zip_file_add(archive.get(), name.c_str(), member, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
        zip_source_free(member);
        return Failed("The archive could not be made: " + std::string(zip_strerror(archive.get())));
    }
    // Fast deflate: a sheet's text packs well at the lowest level already.
    zip_set_file_compression(archive.get(), static_cast<zip_uint64_t>(index), ZIP_CM_DEFLATE, 1);
    if (zip_close(archive.get()) != 0)
        return Failed("The archive could not be made: " + std::string(zip_strerror(archive.get())));
    archive.release();  // closed

    zip_source_t* src = buffer.get();
    zip_stat_t stat;
    if (zip_source_open(src) != 0 || zip_source_stat(src, &stat) != 0 ||
        (stat.valid & ZIP_STAT_SIZE) == 0)
        return Failed("The archive could not be read back.");
    out.resize(static_cast<std::size_t>(stat.size));
    const zip_int64_t n = zip_source_read(src, out.data(), out.size());
    zip_source_close(src);
    if (n < 0 || static_cast<zip_uint64_t>(n) != stat.size)
        return Failed("The archive could not be read back.");
    return Ok();
}

FileResult UnpackGrid(std::span<const std::uint8_t> archive, Grid& out, const ReadLimits& limits) {
    try {
        return UnpackMember(archive, out, limits);
    } catch (const std::bad_alloc&) {
        return Failed(NotEnoughMemoryToRead);
    } catch (const std::exception&) {
        return Failed("The file is damaged or incomplete.");
    }
}

FileResult WriteGridFile(const Grid& grid, const std::filesystem::path& path,
                         const DerivedCells& derived) {
    std::vector<std::uint8_t> bytes;
    if (FileResult packed = PackGrid(grid, MemberNameFor(path), bytes, derived); !packed.ok)
        return packed;

    const std::filesystem::path folder =
        path.has_parent_path() ? path.parent_path() : std::filesystem::path(".");
    // Hidden, beside the target, so the rename never crosses file systems.
    std::string hiddenName(".");
    hiddenName += path.filename().string();
    hiddenName += ".XXXXXX";
    std::string temp = (folder / hiddenName).string();
    const int fd = ::mkstemp(temp.data());
    if (fd < 0)
        return Failed("The file could not be written: " + std::generic_category().message(errno) +
                      ".");
    int code = 0;
    if (!WriteAll(fd, bytes.data(), bytes.size()) || ::fsync(fd) != 0) code = errno;
    if (::close(fd) != 0 && code == 0) code = errno;
    if (code != 0) {
        ::unlink(temp.c_str());
        return Failed("The file could not be written: " + std::generic_category().message(code) +
                      ".");
    }
    // mkstemp makes the file private; a project file keeps the permissions of
    // the file it replaces, or an ordinary document's.
    struct stat previous;
    mode_t mode = 0;
    if (::stat(path.c_str(), &previous) == 0) {
        mode = previous.st_mode & 07777;
    } else {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        mode = 0666 & ~mask;
    }
    ::chmod(temp.c_str(), mode);
    if (std::rename(temp.c_str(), path.c_str()) != 0) {
        const int renameError = errno;
        ::unlink(temp.c_str());
        return Failed(
            "The file could not be written: " + std::generic_category().message(renameError) + ".");
    }
    return Ok();
}

FileResult ReadGridFile(const std::filesystem::path& path, Grid& out, const ReadLimits& limits) {
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec)) return Failed("The file does not exist.");
    const auto size = std::filesystem::file_size(path, ec);
    if (ec) return Failed("The file could not be read.");
    std::ifstream in(path, std::ios::binary);
    if (!in) return Failed("The file could not be read.");
    std::vector<std::uint8_t> bytes;
    try {
        bytes.resize(static_cast<std::size_t>(size));
    } catch (const std::bad_alloc&) {
        return Failed(NotEnoughMemoryToRead);
    }
    if (size > 0 &&
        !in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size)))
        return Failed("The file could not be read.");
    Grid loaded;
    FileResult result = UnpackGrid(bytes, loaded, limits);
    if (result.ok) out = std::move(loaded);
    return result;
}

}  // namespace synthara::sheet
