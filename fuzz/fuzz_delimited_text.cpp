// Any bytes as a delimited file: read, import with a fixed default format,
// and compute what imported. Nothing may crash, hang or throw.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ImportAndCompute.h"
#include "sheet/import/DelimitedText.h"

using namespace synthara;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto read = sheet::ReadDelimitedText(bytes, ',');
    if (read.ok) fuzz::ImportAndCompute(read.table, "fuzz.csv");
    return 0;
}
