#include "sheet/import/XlsxWorkbook.h"

#include <charconv>
#include <cmath>
#include <vector>

#include "sheet/import/XlsxParts.h"

namespace synthara::sheet {
namespace {

bool EndsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

struct Relationship {
    std::string id, type, target;
};

// A part's relationships: what it refers to, by id and by type.
class RelationshipsHandler : public XmlHandler {
  public:
    void Start(std::string_view name, const char** attributes) override {
        if (name != "Relationship") return;
        const char* id = Attribute(attributes, "Id");
        const char* type = Attribute(attributes, "Type");
        const char* target = Attribute(attributes, "Target");
        const char* mode = Attribute(attributes, "TargetMode");
        if (id == nullptr || target == nullptr ||
            (mode != nullptr && mode == std::string_view("External")))
            return;
        found.push_back({id, type != nullptr ? type : "", target});
    }

    const Relationship* ById(std::string_view id) const {
        for (const auto& r : found)
            if (r.id == id) return &r;
        return nullptr;
    }
    const Relationship* ByType(std::string_view typeEnd) const {
        for (const auto& r : found)
            if (EndsWith(r.type, typeEnd)) return &r;
        return nullptr;
    }

    std::vector<Relationship> found;
};

// The workbook part: its sheets in order, each with the id of its part.
class WorkbookHandler : public XmlHandler {
  public:
    void Start(std::string_view name, const char** attributes) override {
        if (name != "sheet") return;
        const char* sheetName = Attribute(attributes, "name");
        const char* id = Attribute(attributes, "id");
        names.emplace_back(sheetName != nullptr ? sheetName : "");
        ids.emplace_back(id != nullptr ? id : "");
    }

    std::vector<std::string> names, ids;
};

// Gathers the text of <t> elements, leaving out the phonetic runs (<rPh>)
// that spell out East Asian text: what a shared or inline string shows.
class StringText {
  public:
    void Start(std::string_view name) {
        if (name == "rPh") ++phonetic_;
        if (name == "t" && phonetic_ == 0) inText_ = true;
    }
    void End(std::string_view name) {
        if (name == "rPh" && phonetic_ > 0) --phonetic_;
        if (name == "t") inText_ = false;
    }
    // False when the text is not taken (outside a <t>).
    bool Take(std::string_view text) {
        if (!inText_) return false;
        text_.append(text);
        return true;
    }
    std::string& Value() { return text_; }
    void Reset() {
        text_.clear();
        phonetic_ = 0;
        inText_ = false;
    }

  private:
    std::string text_;
    int phonetic_ = 0;
    bool inText_ = false;
};

class SharedTextsHandler : public XmlHandler {
  public:
    explicit SharedTextsHandler(const WorkbookLimits& limits) : limits_(limits) {}

    void Start(std::string_view name, const char**) override {
        if (name == "si") {
            inItem_ = true;
            item_.Reset();
        } else if (inItem_) {
            item_.Start(name);
        }
    }
    void End(std::string_view name) override {
        if (name != "si") {
            item_.End(name);
            return;
        }
        inItem_ = false;
        if (texts.size() >= limits_.sharedTexts)
            return Stop("the workbook holds more than " + std::to_string(limits_.sharedTexts) +
                        " texts, more than the import takes");
        texts.push_back(std::move(item_.Value()));
        item_.Reset();
    }
    void Text(std::string_view text) override {
        if (!inItem_ || !item_.Take(text)) return;
        const std::string& value = item_.Value();
        if (value.size() > limits_.cellCharacters && TextCharacters(value) > limits_.cellCharacters)
            Stop("the workbook holds a text of more than " +
                 std::to_string(limits_.cellCharacters) +
                 " characters, more than the import takes");
    }

    std::vector<std::string> texts;

  private:
    WorkbookLimits limits_;
    bool inItem_ = false;
    StringText item_;
};

// "B3" as column 2 (row numbers come from the row); 0 when there are no
// letters, `bad` set when the reference is not one. A column past any sheet's
// width is counted only as far as one past `most`.
std::size_t ColumnOf(std::string_view ref, std::size_t most, bool& bad) {
    std::size_t column = 0, k = 0;
    for (; k < ref.size() && ref[k] >= 'A' && ref[k] <= 'Z'; ++k)
        column = std::min(column * 26 + static_cast<std::size_t>(ref[k] - 'A' + 1), most + 1);
    for (std::size_t d = k; d < ref.size(); ++d)
        if (ref[d] < '0' || ref[d] > '9') bad = true;
    return column;
}

// A whole number counted only as far as one past `most`; false when it is none.
bool CountOf(std::string_view text, std::size_t most, std::size_t& out) {
    if (text.empty()) return false;
    out = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') return false;
        out = std::min(out * 10 + static_cast<std::size_t>(c - '0'), most + 1);
    }
    return true;
}

// A worksheet's cells, each as the user sees it.
class SheetHandler : public XmlHandler {
  public:
    SheetHandler(const std::vector<std::string>& shared, const WorkbookLimits& limits,
                 std::size_t rowLimit)
        : shared_(shared), limits_(limits), cells_(limits, rowLimit) {}

    void Start(std::string_view name, const char** attributes) override {
        if (name == "row") return StartRow(attributes);
        if (name == "c") return StartCell(attributes);
        if (!inCell_) return;
        if (name == "v") inValue_ = true;
        if (name == "is") inInline_ = true;
        if (inInline_) inline_.Start(name);
    }

    void End(std::string_view name) override {
        if (name == "c" && inCell_) return EndCell();
        if (name == "v") inValue_ = false;
        if (name == "is") inInline_ = false;
        if (inInline_) inline_.End(name);
    }

    void Text(std::string_view text) override {
        if (!inCell_) return;
        if (inValue_) {
            value_.append(text);
            Check(value_);
        } else if (inInline_ && inline_.Take(text)) {
            Check(inline_.Value());
        }
    }

    DelimitedTable Take() { return cells_.Take(); }

  private:
    void StartRow(const char** attributes) {
        std::size_t row = row_ + 1;
        if (const char* r = Attribute(attributes, "r");
            r != nullptr && !CountOf(r, limits_.rows, row))
            return Stop("the workbook is damaged: a row's number is \"" + std::string(r) + "\"");
        if (cells_.Enough(row)) return Stop();
        row_ = row;
        column_ = 0;
    }

    void StartCell(const char** attributes) {
        inCell_ = true;
        std::size_t column = column_ + 1;
        if (const char* r = Attribute(attributes, "r")) {
            bool bad = false;
            const std::size_t given = ColumnOf(r, limits_.columns, bad);
            if (bad)
                return Stop("the workbook is damaged: a cell of row " + std::to_string(row_) +
                            " is named \"" + std::string(r) + "\"");
            if (given > 0) column = given;
        }
        column_ = column;
        const char* type = Attribute(attributes, "t");
        type_ = type != nullptr ? type : "n";
        value_.clear();
        inline_.Reset();
    }

    void Check(const std::string& text) {
        if (text.size() > limits_.cellCharacters && !cells_.TextFits(row_, column_, text))
            Stop(cells_.Fault());
    }

    void EndCell() {
        inCell_ = inValue_ = inInline_ = false;
        std::string text;
        if (!Shown(text)) return;
        if (!cells_.Put(row_, column_, std::move(text))) Stop(cells_.Fault());
    }

    // The cell's text by its type; false when the workbook is damaged.
    bool Shown(std::string& text) {
        if (type_ == "inlineStr") {
            text = std::move(inline_.Value());
        } else if (type_ == "s") {
            std::size_t index = 0;
            if (!CountOf(value_, shared_.size(), index) || index >= shared_.size()) {
                Stop("the workbook is damaged: cell " + CellName(row_, column_) +
                     " refers to a text the workbook lacks");
                return false;
            }
            text = shared_[index];
        } else if (type_ == "b") {
            text = value_ == "1" ? "TRUE" : value_ == "0" ? "FALSE" : value_;
        } else if (type_ == "n") {
            double number = 0;
            const auto end = value_.data() + value_.size();
            const auto [ptr, ec] = std::from_chars(value_.data(), end, number);
            text = ec == std::errc() && ptr == end && std::isfinite(number) ? NumberText(number)
                                                                            : value_;
        } else {
            text = value_;  // a formula's text, an error value, a date written out
        }
        return true;
    }

    const std::vector<std::string>& shared_;
    WorkbookLimits limits_;
    SheetCells cells_;
    std::size_t row_ = 0, column_ = 0;
    bool inCell_ = false, inValue_ = false, inInline_ = false;
    std::string type_, value_;
    StringText inline_;
};

std::string RelationshipsOf(const std::string& part) {
    const auto slash = part.rfind('/');
    const std::size_t cut = slash == std::string::npos ? 0 : slash + 1;
    return part.substr(0, cut) + "_rels/" + part.substr(cut) + ".rels";
}

WorkbookResult ReadWorkbook(XlsxArchive& archive, const WorkbookRequest& request) {
    archive.SetLimit(request.limits.unpackedBytes);
    std::string fault;
    std::string workbookPart = "xl/workbook.xml";
    if (archive.Has("_rels/.rels")) {
        RelationshipsHandler root;
        if (!archive.Parse("_rels/.rels", root, fault)) return WorkbookFault(fault);
        if (const auto* main = root.ByType("/officeDocument"))
            workbookPart = ResolvePart("", main->target);
    }
    WorkbookHandler workbook;
    if (!archive.Parse(workbookPart, workbook, fault)) return WorkbookFault(fault);
    WorkbookResult result;
    result.sheetNames = workbook.names;
    if (request.namesOnly) {
        result.ok = true;
        return result;
    }
    const int picked = PickSheet(workbook.names, request.sheet, fault);
    if (picked < 0) return WorkbookFault(fault);

    RelationshipsHandler links;
    if (!archive.Parse(RelationshipsOf(workbookPart), links, fault)) return WorkbookFault(fault);
    const auto index = static_cast<std::size_t>(picked);
    const Relationship* sheetLink = links.ById(workbook.ids[index]);
    if (sheetLink == nullptr)
        return WorkbookFault("the workbook is damaged: it lacks the part of the sheet \"" +
                             workbook.names[index] + "\"");
    SharedTextsHandler shared(request.limits);
    if (const auto* texts = links.ByType("/sharedStrings")) {
        if (!archive.Parse(ResolvePart(workbookPart, texts->target), shared, fault))
            return WorkbookFault(fault);
    }
    SheetHandler sheet(shared.texts, request.limits, request.rowLimit);
    if (!archive.Parse(ResolvePart(workbookPart, sheetLink->target), sheet, fault))
        return WorkbookFault(fault);
    result.table = sheet.Take();
    result.ok = true;
    return result;
}

}  // namespace

WorkbookResult ReadXlsxFile(const std::string& path, const WorkbookRequest& request) {
    XlsxArchive archive;
    if (!archive.OpenFile(path)) return WorkbookFault(archive.Fault());
    return ReadWorkbook(archive, request);
}

WorkbookResult ReadXlsxBytes(std::string_view bytes, const WorkbookRequest& request) {
    XlsxArchive archive;
    if (!archive.OpenBytes(bytes)) return WorkbookFault(archive.Fault());
    return ReadWorkbook(archive, request);
}

}  // namespace synthara::sheet
