#include "shell/Settings.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstdlib>

namespace synthara::shell {

namespace {

// A key read and written under its own name.
constexpr SettingKey Key(std::string_view section, std::string_view name, SettingKind kind,
                         std::optional<std::string_view> byDefault) {
    return {name, section, name, name, kind, byDefault};
}

// clang-format off
constexpr std::array kTable = std::to_array<SettingKey>({
    Key("Startup", "FudgeFactor", SettingKind::Number, std::nullopt),
    Key("Startup", "ShowWizard01", SettingKind::Integer, "1"),
    Key("Startup", "ShowWizard02", SettingKind::Integer, "1"),
    Key("Startup", "ShowWizard03", SettingKind::Integer, "1"),
    Key("Startup", "ShowWizard04", SettingKind::Integer, "1"),
    Key("Startup", "ShowWizard05", SettingKind::Integer, "1"),
    Key("Startup", "ShowWizard06", SettingKind::Integer, "1"),
    Key("Startup", "CompModelA(1,1)", SettingKind::Integer, "1"),
    Key("Startup", "CompModelA(1,2)", SettingKind::Integer, "0"),
    Key("Startup", "CompModelA(1,3)", SettingKind::Integer, "0"),
    Key("Startup", "CompModelA(1,4)", SettingKind::Integer, "1"),
    Key("Startup", "CompModelA(1,5)", SettingKind::Integer, "0"),
    Key("Startup", "CompModelA(2,1)", SettingKind::Integer, "1"),
    Key("Startup", "CompModelA(2,2)", SettingKind::Integer, "0"),
    Key("Startup", "CompModelA(2,3)", SettingKind::Integer, "0"),
    Key("Startup", "CompModelA(2,4)", SettingKind::Integer, "1"),
    Key("Startup", "CompModelA(2,5)", SettingKind::Integer, "0"),
    Key("Startup", "RunWhich(1)", SettingKind::Integer, "1"),
    Key("Startup", "RunWhich(2)", SettingKind::Integer, "1"),
    Key("Startup", "WizardLargeFont", SettingKind::Integer, "0"),
    Key("Startup", "OptCurrentNameSelection", SettingKind::Text, ""),
    Key("Startup", "HelpPath", SettingKind::Text, ""),
    Key("StartUp", "mShowGuide", SettingKind::Integer, "1"),
    Key("Settings", "ShowAllIndices", SettingKind::Integer, "2"),
    Key("Settings", "RawScaleL", SettingKind::Number, "-1"),
    Key("Settings", "RawScaleR", SettingKind::Number, "1"),
    Key("Settings", "LogScaleL", SettingKind::Number, "0.01"),
    Key("Settings", "LogScaleR", SettingKind::Number, "100"),
    Key("Settings", "LineType1", SettingKind::Integer, "2"),
    Key("Settings", "LineType2", SettingKind::Integer, "0"),
    Key("Settings", "LineType3", SettingKind::Integer, "2"),
    Key("Settings", "ScWidth", SettingKind::Integer, "4000"),
    Key("Settings", "SchematicOffset", SettingKind::Integer, "400"),
    Key("Settings", "StudyLineWidth", SettingKind::Integer, "2"),
    Key("Settings", "gColorMode", SettingKind::Integer, "1"),
    Key("Settings", "gGraphRad", SettingKind::Integer, "100"),
    Key("Settings", "gGraphRadSummary", SettingKind::Integer, "100"),
    Key("Settings", "isWhat", SettingKind::Integer, "1"),
    Key("Settings", "gtxtSchWidth", SettingKind::Number, "4"),
    Key("Settings", "gSpnCIWidth", SettingKind::Integer, "1"),
    Key("Settings", "gTxtBuffer(0)", SettingKind::Number, "0.5"),
    Key("Settings", "gTxtBuffer(1)", SettingKind::Number, "0.5"),
    Key("Settings", "gFontName", SettingKind::Text, "Arial"),
    Key("Settings", "gHeaderLineSize", SettingKind::Integer, "100"),
    Key("Settings", "gFooterLineSize", SettingKind::Integer, "100"),
    Key("Settings", "gHeaderAlign", SettingKind::Integer, "2"),
    Key("Settings", "gFooterAlign", SettingKind::Integer, "1"),
    Key("Settings", "gHeaderLineHeight", SettingKind::Integer, "100"),
    Key("Settings", "gFooterLineHeight", SettingKind::Integer, "100"),
    Key("Settings", "gtxtRowBuffer", SettingKind::Number, "1"),
    Key("Settings", "gtxtColBuffer", SettingKind::Number, "1.2"),
    Key("Settings", "gPrinterFont", SettingKind::Text, "Arial"),
    Key("Settings", "gPrinterPageWidth", SettingKind::Integer, "1"),
    Key("Settings", "gPrinterPageHeight", SettingKind::Integer, "1"),
    Key("Settings", "gPrinterPageType", SettingKind::Text, ""),
    Key("Settings", "gPrinterOrientation", SettingKind::Integer, "1"),
    Key("Settings", "gPrinterPageUnits", SettingKind::Text, "in"),
    Key("Settings", "gPrinterMarginLeft", SettingKind::Integer, "720"),
    Key("Settings", "gPrinterMarginRight", SettingKind::Integer, "720"),
    Key("Settings", "gPrinterMarginTop", SettingKind::Integer, "2160"),
    Key("Settings", "gPrinterMarginBottom", SettingKind::Integer, "1440"),
    Key("Settings", "gPrinterMarginHeader", SettingKind::Integer, "720"),
    Key("Settings", "gPrinterMarginFooter", SettingKind::Integer, "1440"),
    Key("Settings", "gSpnSpaceAddRows", SettingKind::Integer, "1"),
    // Read and written under two spellings.
    {"gSpnSpaceAddcols", "Settings", "gSpnSpaceAddcols", "gSpnSpaceAddCols", SettingKind::Integer, "1"},
    Key("Settings", "gOptShorten", SettingKind::Integer, "1"),
    Key("Settings", "gOptOnePage", SettingKind::Integer, "1"),
    Key("Settings", "gPapers", SettingKind::Text, "PowerPoint"),
    Key("Settings", "gOrientation", SettingKind::Integer, "1"),
    Key("Settings", "gPaperWidth1", SettingKind::Integer, "1000"),
    Key("Settings", "gPaperHeight1", SettingKind::Integer, "750"),
    Key("Settings", "gMarginTop1", SettingKind::Integer, "50"),
    Key("Settings", "gMarginLeft1", SettingKind::Integer, "50"),
    Key("Settings", "gHeaderText", SettingKind::Text, "Meta Analysis"),
    Key("Settings", "gFooterText", SettingKind::Text, "Meta Analysis"),
    Key("Settings", "gTitleHeight", SettingKind::Integer, "100"),
    Key("Settings", "gFooterHeight", SettingKind::Integer, "100"),
    Key("Settings", "gSpnFooterHeight", SettingKind::Integer, "100"),
    Key("Settings", "gSpnFooterLine", SettingKind::Integer, "100"),
    Key("Settings", "gFooterText(1)", SettingKind::Text, "Favours A"),
    Key("Settings", "gFooterText(2)", SettingKind::Text, "Favours B"),
    // Written, never read.
    {"gLabelText(1)", "Settings", "", "gLabelText(1)", SettingKind::Text, std::nullopt, "gFooterText(1)"},
    {"gLabelText(2)", "Settings", "", "gLabelText(2)", SettingKind::Text, std::nullopt, "gFooterText(2)"},
    Key("Settings", "gLabelsHeight", SettingKind::Integer, "100"),
    Key("Settings", "gSpaceBetweenCols", SettingKind::Number, "0.05"),
    Key("Settings", "gSpaceBetweenRows", SettingKind::Number, "0.05"),
    Key("Settings", "gSchWidth", SettingKind::Number, "0.3"),
    Key("Settings", "gSchBuffer(0)", SettingKind::Number, "0.2"),
    Key("Settings", "gSchBuffer(1)", SettingKind::Number, "0.2"),
    Key("Settings", "gPointSymbol(1)", SettingKind::Integer, "3"),
    Key("Settings", "gPointSymbol(2)", SettingKind::Integer, "7"),
    Key("Settings", "gPointSymbol(3)", SettingKind::Integer, "7"),
    Key("Settings", "gProportional", SettingKind::Integer, "2"),
    Key("Settings", "gMinSide", SettingKind::Integer, "2"),
    Key("Settings", "gBaseSymbolSize", SettingKind::Number, "0.8"),
    Key("Settings", "gCILine", SettingKind::Integer, "20"),
    Key("Settings", "gVLine", SettingKind::Integer, "10"),
    Key("Settings", "mBoldMainTitle", SettingKind::Integer, "1"),
    Key("Settings", "mBoldSubTitle", SettingKind::Integer, "1"),
    Key("Settings", "mFooterBold", SettingKind::Integer, "1"),
    // Written, never read.
    {"gFooterBold", "Settings", "", "gFooterBold", SettingKind::Integer, std::nullopt, "mFooterBold"},
    Key("Settings", "mHeaderBold", SettingKind::Integer, "1"),
    Key("Settings", "mKeepEqual", SettingKind::Integer, "1"),
    Key("Settings", "mLabelsBold", SettingKind::Integer, "1"),
    Key("Settings", "mLabelsSameFont", SettingKind::Integer, "1"),
    Key("Settings", "mShowFooter", SettingKind::Integer, "1"),
    Key("Settings", "mShowFooterLine", SettingKind::Integer, "1"),
    Key("Settings", "mShowHeader", SettingKind::Integer, "1"),
    Key("Settings", "mShowHeaderLine", SettingKind::Integer, "1"),
    Key("Settings", "mShowSe", SettingKind::Integer, "1"),
    Key("Settings", "mShowVariance", SettingKind::Integer, "0"),
    Key("Settings", "dBackColor(1)", SettingKind::Color, "16777215"),
    Key("Settings", "dLineColorA(1)", SettingKind::Color, "0"),
    Key("Settings", "dLineColorB(1)", SettingKind::Color, "0"),
    Key("Settings", "dCaseColor(1)", SettingKind::Color, "0"),
    Key("Settings", "dSummaryColor(1)", SettingKind::Color, "0"),
    Key("Settings", "dTitleColor(1)", SettingKind::Color, "0"),
    Key("Settings", "dFooterColor(1)", SettingKind::Color, "0"),
    Key("Settings", "dLabelColor(1)", SettingKind::Color, "0"),
    Key("Settings", "dSubColor(1)", SettingKind::Color, "0"),
    Key("Settings", "dTextColor(1)", SettingKind::Color, "0"),
    Key("Settings", "dScaleColor(1)", SettingKind::Color, "0"),
    Key("Settings", "dBorderColor(1)", SettingKind::Color, "0"),
    Key("Settings", "dBorderWidth(1)", SettingKind::Integer, "1"),
    Key("Settings", "dBorderOn(1)", SettingKind::Integer, "0"),
    Key("Settings", "dBackColor(2)", SettingKind::Color, "9175040"),
    Key("Settings", "dLineColorA(2)", SettingKind::Color, "16777215"),
    Key("Settings", "dLineColorB(2)", SettingKind::Color, "16777215"),
    Key("Settings", "dCaseColor(2)", SettingKind::Color, "16777215"),
    Key("Settings", "dSummaryColor(2)", SettingKind::Color, "16777215"),
    Key("Settings", "dTitleColor(2)", SettingKind::Color, "16777215"),
    // Read and written under two names.
    {"dFooterColor(2)", "Settings", "dFooterColor(2)", "dFooterTitle(2)", SettingKind::Color, "16777215"},
    Key("Settings", "dLabelColor(2)", SettingKind::Color, "16777215"),
    Key("Settings", "dSubColor(2)", SettingKind::Color, "16777215"),
    Key("Settings", "dTextColor(2)", SettingKind::Color, "16777215"),
    Key("Settings", "dScaleColor(2)", SettingKind::Color, "16777215"),
    Key("Settings", "dBorderColor(2)", SettingKind::Color, "16777215"),
    Key("Settings", "dBorderWidth(2)", SettingKind::Integer, "1"),
    // The second scheme's switch is read under the first one's key.
    {"dBorderOn(2)", "Settings", "dBorderOn(1)", "dBorderOn(2)", SettingKind::Integer, "1"},
    // Where the cursor goes after Enter in the sheet: 0 down, 1 right.
    Key("Settings", "EnterMovesRight", SettingKind::Integer, "0"),
});
// clang-format on

// A whole text that reads as a number.
std::optional<double> ParseNumber(const std::string& text) {
    if (text.empty()) return std::nullopt;
    char* end = nullptr;
    errno = 0;
    const double value = std::strtod(text.c_str(), &end);
    if (end != text.c_str() + text.size() || errno == ERANGE || !std::isfinite(value))
        return std::nullopt;
    return value;
}

}  // namespace

std::span<const SettingKey> SettingsTable() {
    return kTable;
}

const SettingKey* FindSetting(std::string_view name) {
    const auto it = std::find_if(kTable.begin(), kTable.end(),
                                 [name](const SettingKey& key) { return key.name == name; });
    return it == kTable.end() ? nullptr : &*it;
}

StoredSettings::StoredSettings() {
    for (const SettingKey& key : kTable)
        if (key.byDefault) values_[std::string(key.name)] = std::string(*key.byDefault);
}

std::vector<std::string> StoredSettings::Load(const ports::SettingsStore& store) {
    std::vector<std::string> unreadable;
    for (const SettingKey& key : kTable) {
        if (key.readKey.empty()) continue;
        const auto stored = store.Get(std::string(key.section), std::string(key.readKey));
        if (!stored) continue;
        if (key.kind != SettingKind::Text && !ParseNumber(*stored)) {
            unreadable.emplace_back(key.name);
            continue;
        }
        values_[std::string(key.name)] = *stored;
    }
    return unreadable;
}

void StoredSettings::Save(ports::SettingsStore& store) const {
    for (const SettingKey& key : kTable) {
        const std::string_view from = key.writtenFrom.empty() ? key.name : key.writtenFrom;
        const auto it = values_.find(std::string(from));
        if (it == values_.end()) continue;
        store.Set(std::string(key.section), std::string(key.writeKey), it->second);
    }
}

std::string StoredSettings::Text(std::string_view name) const {
    const auto it = values_.find(std::string(name));
    return it == values_.end() ? std::string() : it->second;
}

double StoredSettings::Number(std::string_view name) const {
    return ParseNumber(Text(name)).value_or(0.0);
}

long StoredSettings::Integer(std::string_view name) const {
    return std::lround(Number(name));
}

bool StoredSettings::IsSet(std::string_view name) const {
    return values_.count(std::string(name)) != 0;
}

void StoredSettings::Set(std::string_view name, std::string value) {
    values_[std::string(name)] = std::move(value);
}

}  // namespace synthara::shell
