#include "sheet/import/XlsxParts.h"

#include <array>
#include <memory>

#include <expat.h>
#include <zip.h>

#include "sheet/import/WorkbookTable.h"

namespace synthara::sheet {
namespace {

// Expat joins a namespaced name as "URI local"; the blank cannot occur in either.
constexpr char NamespaceSeparator = ' ';

std::string_view LocalName(const char* name) {
    const std::string_view full(name);
    const auto cut = full.rfind(NamespaceSeparator);
    return cut == std::string_view::npos ? full : full.substr(cut + 1);
}

struct ParserFree {
    void operator()(XML_ParserStruct* p) const { XML_ParserFree(p); }
};

struct FileClose {
    void operator()(zip_file_t* f) const { zip_fclose(f); }
};

XmlHandler& HandlerOf(void* data) {
    return *static_cast<XmlHandler*>(data);
}

void XMLCALL OnStart(void* data, const XML_Char* name, const XML_Char** attributes) {
    HandlerOf(data).Start(LocalName(name), attributes);
}

void XMLCALL OnEnd(void* data, const XML_Char* name) {
    HandlerOf(data).End(LocalName(name));
}

void XMLCALL OnText(void* data, const XML_Char* text, int length) {
    HandlerOf(data).Text(std::string_view(text, static_cast<std::size_t>(length)));
}

// No part of a workbook declares a document type; one that does is refused
// before it can define entities that expand.
void XMLCALL OnDoctype(void* data, const XML_Char*, const XML_Char*, const XML_Char*, int) {
    HandlerOf(data).Stop("the workbook is damaged: a part declares a document type");
}

std::string Damaged(const std::string& part, const char* what) {
    return "the workbook is damaged: its part \"" + part + "\" " + what;
}

}  // namespace

void XmlHandler::Stop(std::string fault) {
    if (stopped_) return;
    stopped_ = true;
    fault_ = std::move(fault);
    XML_StopParser(static_cast<XML_Parser>(parser_), XML_FALSE);
}

const char* Attribute(const char** attributes, std::string_view name) {
    for (const char** a = attributes; a != nullptr && *a != nullptr; a += 2)
        if (LocalName(a[0]) == name) return a[1];
    return nullptr;
}

std::string ResolvePart(std::string_view from, std::string_view target) {
    std::string joined;
    if (!target.empty() && target.front() == '/') {
        joined = target.substr(1);
    } else {
        const auto slash = from.rfind('/');
        joined = std::string(slash == std::string_view::npos ? "" : from.substr(0, slash + 1));
        joined += target;
    }
    // Takes out "." and "name/.." steps; a ".." above the top is dropped.
    std::string out;
    std::size_t start = 0;
    while (start <= joined.size()) {
        auto end = joined.find('/', start);
        if (end == std::string::npos) end = joined.size();
        const std::string_view step(joined.data() + start, end - start);
        if (step == "..") {
            const auto cut = out.rfind('/', out.empty() ? 0 : out.size() - 2);
            out.erase(cut == std::string::npos ? 0 : cut + 1);
        } else if (!step.empty() && step != ".") {
            out.append(step);
            if (end < joined.size()) out += '/';
        }
        start = end + 1;
    }
    return out;
}

XlsxArchive::~XlsxArchive() {
    if (zip_ != nullptr) zip_discard(zip_);
}

bool XlsxArchive::Opened(zip* archive, int code, bool encrypted) {
    zip_ = archive;
    if (zip_ != nullptr) return true;
    if (encrypted)
        fault_ =
            "the workbook is password-protected, or it is an older .xls workbook under an .xlsx "
            "name; save it as .xlsx without a password and try again";
    else if (code == ZIP_ER_MEMORY)
        fault_ = "there is not enough memory to read the workbook";
    else
        fault_ = "it is not an .xlsx workbook, or the workbook is damaged";
    return false;
}

bool XlsxArchive::OpenFile(const std::string& path) {
    int code = 0;
    zip* archive = zip_open(path.c_str(), ZIP_RDONLY, &code);
    return Opened(archive, code, archive == nullptr && IsCompoundDocument(FileHead(path)));
}

bool XlsxArchive::OpenBytes(std::string_view bytes) {
    zip_error_t error;
    zip_error_init(&error);
    zip* archive = nullptr;
    if (zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error)) {
        archive = zip_open_from_source(source, ZIP_RDONLY, &error);
        if (archive == nullptr) zip_source_free(source);
    }
    const int code = zip_error_code_zip(&error);
    zip_error_fini(&error);
    return Opened(archive, code, IsCompoundDocument(bytes));
}

bool XlsxArchive::Has(const std::string& part) const {
    return zip_name_locate(zip_, part.c_str(), ZIP_FL_NOCASE) >= 0;
}

bool XlsxArchive::Parse(const std::string& part, XmlHandler& handler, std::string& fault) {
    const zip_int64_t index = zip_name_locate(zip_, part.c_str(), ZIP_FL_NOCASE);
    if (index < 0) {
        fault = "the workbook is damaged: it lacks its part \"" + part + "\"";
        return false;
    }
    const std::unique_ptr<zip_file_t, FileClose> file(
        zip_fopen_index(zip_, static_cast<zip_uint64_t>(index), 0));
    if (!file) {
        fault = zip_error_code_zip(zip_get_error(zip_)) == ZIP_ER_NOPASSWD
                    ? "the workbook is password-protected; save it without a password and try "
                      "again"
                    : Damaged(part, "cannot be unpacked");
        return false;
    }
    // A part says its own encoding (UTF-8 or UTF-16); expat hands over UTF-8 either way.
    const std::unique_ptr<XML_ParserStruct, ParserFree> parser(
        XML_ParserCreateNS(nullptr, NamespaceSeparator));
    if (!parser) {
        fault = "there is not enough memory to read the workbook";
        return false;
    }
    XML_SetUserData(parser.get(), &handler);
    XML_SetElementHandler(parser.get(), OnStart, OnEnd);
    XML_SetCharacterDataHandler(parser.get(), OnText);
    XML_SetStartDoctypeDeclHandler(parser.get(), OnDoctype);
    handler.Attach(parser.get());

    std::array<char, 1 << 16> chunk;
    for (;;) {
        const zip_int64_t n = zip_fread(file.get(), chunk.data(), chunk.size());
        if (n < 0) {
            fault = Damaged(part, "cannot be unpacked");
            return false;
        }
        used_ += static_cast<std::uint64_t>(n);
        if (used_ > limit_) {
            fault = "the workbook unpacks to more than " + std::to_string(limit_ >> 20) +
                    " MB, more than the import takes";
            return false;
        }
        const bool last = n == 0;
        const auto status = XML_Parse(parser.get(), chunk.data(), static_cast<int>(n), last);
        if (handler.Stopped()) {
            fault = handler.Fault();
            return fault.empty();
        }
        if (status != XML_STATUS_OK) {
            fault = XML_GetErrorCode(parser.get()) == XML_ERROR_NO_MEMORY
                        ? "there is not enough memory to read the workbook"
                        : Damaged(part, "is not well-formed XML");
            return false;
        }
        if (last) return true;
    }
}

}  // namespace synthara::sheet
