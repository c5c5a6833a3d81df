#pragma once
// Small .xlsx workbooks made by the tests and the fuzzer: the parts a
// spreadsheet program writes at the least, packed with libzip. Tests change
// or leave out a part to make a damaged workbook.
#include <charconv>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <zip.h>

namespace synthara::testsupport {

using Parts = std::map<std::string, std::string>;

struct XlsxSheet {
    std::string name;
    std::string sheetData;  // the <row> elements
};

inline std::string XmlEscaped(const std::string& text) {
    std::string out;
    for (const char c : text) {
        if (c == '&')
            out += "&amp;";
        else if (c == '<')
            out += "&lt;";
        else if (c == '>')
            out += "&gt;";
        else if (c == '"')
            out += "&quot;";
        else
            out += c;
    }
    return out;
}

// Rows of cells from rows of text: a number (as std::from_chars reads one)
// as a number cell, any other text as a shared text whose index is its place
// in `shared`, which grows as texts are met. Rows start at row 1, column A.
inline std::string SheetDataOf(const std::vector<std::vector<std::string>>& rows,
                               std::vector<std::string>& shared) {
    std::string xml;
    for (std::size_t r = 0; r < rows.size(); ++r) {
        xml += "<row r=\"" + std::to_string(r + 1) + "\">";
        for (const std::string& cell : rows[r]) {
            double number = 0;
            const auto [end, ec] = std::from_chars(cell.data(), cell.data() + cell.size(), number);
            if (cell.empty()) {
                xml += "<c/>";
            } else if (ec == std::errc() && end == cell.data() + cell.size()) {
                xml += "<c><v>" + cell + "</v></c>";
            } else {
                shared.push_back(cell);
                xml += "<c t=\"s\"><v>" + std::to_string(shared.size() - 1) + "</v></c>";
            }
        }
        xml += "</row>";
    }
    return xml;
}

inline Parts XlsxPartsOf(const std::vector<XlsxSheet>& sheets,
                         const std::vector<std::string>& shared = {}) {
    const std::string main = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
    const std::string rel = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
    Parts parts;
    parts["[Content_Types].xml"] =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?><Types "
        "xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"><Default "
        "Extension=\"xml\" ContentType=\"application/xml\"/></Types>";
    parts["_rels/.rels"] =
        "<?xml version=\"1.0\"?><Relationships "
        "xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"><Relationship "
        "Id=\"rId1\" Type=\"" +
        rel + "/officeDocument\" Target=\"xl/workbook.xml\"/></Relationships>";
    std::string workbook =
        "<?xml version=\"1.0\"?><workbook xmlns=\"" + main + "\" xmlns:r=\"" + rel + "\"><sheets>";
    std::string links =
        "<?xml version=\"1.0\"?><Relationships "
        "xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
    for (std::size_t k = 0; k < sheets.size(); ++k) {
        const std::string n = std::to_string(k + 1);
        workbook += "<sheet name=\"" + XmlEscaped(sheets[k].name) + "\" sheetId=\"" + n +
                    "\" r:id=\"rId" + n + "\"/>";
        links += "<Relationship Id=\"rId" + n + "\" Type=\"" + rel +
                 "/worksheet\" Target=\"worksheets/sheet" + n + ".xml\"/>";
        parts["xl/worksheets/sheet" + n + ".xml"] = "<?xml version=\"1.0\"?><worksheet xmlns=\"" +
                                                    main + "\"><sheetData>" + sheets[k].sheetData +
                                                    "</sheetData></worksheet>";
    }
    links += "<Relationship Id=\"rIdS\" Type=\"" + rel +
             "/sharedStrings\" Target=\"/xl/sharedStrings.xml\"/></Relationships>";
    parts["xl/workbook.xml"] = workbook + "</sheets></workbook>";
    parts["xl/_rels/workbook.xml.rels"] = links;
    std::string texts = "<?xml version=\"1.0\"?><sst xmlns=\"" + main + "\">";
    for (const std::string& text : shared)
        texts += "<si><t>" + XmlEscaped(text) + "</t></si>";
    parts["xl/sharedStrings.xml"] = texts + "</sst>";
    return parts;
}

// The parts packed as a ZIP archive, deflated; empty if libzip failed.
inline std::string Zipped(const Parts& parts) {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* buffer = zip_source_buffer_create(nullptr, 0, 0, &error);
    zip_t* archive = zip_open_from_source(buffer, ZIP_TRUNCATE, &error);
    zip_source_keep(buffer);
    for (const auto& [name, text] : parts) {
        const auto index = zip_file_add(archive, name.c_str(),
                                        zip_source_buffer(archive, text.data(), text.size(), 0), 0);
        zip_set_file_compression(archive, static_cast<zip_uint64_t>(index), ZIP_CM_DEFLATE, 9);
    }
    std::string bytes;
    zip_stat_t stat;
    if (zip_close(archive) == 0 && zip_source_open(buffer) == 0) {
        if (zip_source_stat(buffer, &stat) == 0) {
            bytes.resize(static_cast<std::size_t>(stat.size));
            if (zip_source_read(buffer, bytes.data(), bytes.size()) !=
                static_cast<zip_int64_t>(bytes.size()))
                bytes.clear();
        }
        zip_source_close(buffer);
    }
    zip_source_free(buffer);
    return bytes;
}

inline std::string XlsxBytes(const std::vector<XlsxSheet>& sheets,
                             const std::vector<std::string>& shared = {}) {
    return Zipped(XlsxPartsOf(sheets, shared));
}

}  // namespace synthara::testsupport
