#include "shell/Settings.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstdlib>

namespace synthara::shell {

namespace {

// clang-format off
constexpr std::array kTable = std::to_array<SettingKey>({
    {"FudgeFactor", "Startup", "FudgeFactor", "FudgeFactor", SettingKind::Number, std::nullopt},
    {"ShowWizard01", "Startup", "ShowWizard01", "ShowWizard01", SettingKind::Integer, "1"},
    {"ShowWizard02", "Startup", "ShowWizard02", "ShowWizard02", SettingKind::Integer, "1"},
    {"ShowWizard03", "Startup", "ShowWizard03", "ShowWizard03", SettingKind::Integer, "1"},
    {"ShowWizard04", "Startup", "ShowWizard04", "ShowWizard04", SettingKind::Integer, "1"},
    {"ShowWizard05", "Startup", "ShowWizard05", "ShowWizard05", SettingKind::Integer, "1"},
    {"ShowWizard06", "Startup", "ShowWizard06", "ShowWizard06", SettingKind::Integer, "1"},
    {"CompModelA(1,1)", "Startup", "CompModelA(1,1)", "CompModelA(1,1)", SettingKind::Integer, "1"},
    {"CompModelA(1,2)", "Startup", "CompModelA(1,2)", "CompModelA(1,2)", SettingKind::Integer, "0"},
    {"CompModelA(1,3)", "Startup", "CompModelA(1,3)", "CompModelA(1,3)", SettingKind::Integer, "0"},
    {"CompModelA(1,4)", "Startup", "CompModelA(1,4)", "CompModelA(1,4)", SettingKind::Integer, "1"},
    {"CompModelA(1,5)", "Startup", "CompModelA(1,5)", "CompModelA(1,5)", SettingKind::Integer, "0"},
    {"CompModelA(2,1)", "Startup", "CompModelA(2,1)", "CompModelA(2,1)", SettingKind::Integer, "1"},
    {"CompModelA(2,2)", "Startup", "CompModelA(2,2)", "CompModelA(2,2)", SettingKind::Integer, "0"},
    {"CompModelA(2,3)", "Startup", "CompModelA(2,3)", "CompModelA(2,3)", SettingKind::Integer, "0"},
    {"CompModelA(2,4)", "Startup", "CompModelA(2,4)", "CompModelA(2,4)", SettingKind::Integer, "1"},
    {"CompModelA(2,5)", "Startup", "CompModelA(2,5)", "CompModelA(2,5)", SettingKind::Integer, "0"},
    {"RunWhich(1)", "Startup", "RunWhich(1)", "RunWhich(1)", SettingKind::Integer, "1"},
    {"RunWhich(2)", "Startup", "RunWhich(2)", "RunWhich(2)", SettingKind::Integer, "1"},
    {"WizardLargeFont", "Startup", "WizardLargeFont", "WizardLargeFont", SettingKind::Integer, "0"},
    {"OptCurrentNameSelection", "Startup", "OptCurrentNameSelection", "OptCurrentNameSelection", SettingKind::Text, ""},
    {"HelpPath", "Startup", "HelpPath", "HelpPath", SettingKind::Text, ""},
    {"mShowGuide", "StartUp", "mShowGuide", "mShowGuide", SettingKind::Integer, "1"},
    {"ShowAllIndices", "Settings", "ShowAllIndices", "ShowAllIndices", SettingKind::Integer, "2"},
    {"RawScaleL", "Settings", "RawScaleL", "RawScaleL", SettingKind::Number, "-1"},
    {"RawScaleR", "Settings", "RawScaleR", "RawScaleR", SettingKind::Number, "1"},
    {"LogScaleL", "Settings", "LogScaleL", "LogScaleL", SettingKind::Number, "0.01"},
    {"LogScaleR", "Settings", "LogScaleR", "LogScaleR", SettingKind::Number, "100"},
    {"LineType1", "Settings", "LineType1", "LineType1", SettingKind::Integer, "2"},
    {"LineType2", "Settings", "LineType2", "LineType2", SettingKind::Integer, "0"},
    {"LineType3", "Settings", "LineType3", "LineType3", SettingKind::Integer, "2"},
    {"ScWidth", "Settings", "ScWidth", "ScWidth", SettingKind::Integer, "4000"},
    {"SchematicOffset", "Settings", "SchematicOffset", "SchematicOffset", SettingKind::Integer, "400"},
    {"StudyLineWidth", "Settings", "StudyLineWidth", "StudyLineWidth", SettingKind::Integer, "2"},
    {"gColorMode", "Settings", "gColorMode", "gColorMode", SettingKind::Integer, "1"},
    {"gGraphRad", "Settings", "gGraphRad", "gGraphRad", SettingKind::Integer, "100"},
    {"gGraphRadSummary", "Settings", "gGraphRadSummary", "gGraphRadSummary", SettingKind::Integer, "100"},
    {"isWhat", "Settings", "isWhat", "isWhat", SettingKind::Integer, "1"},
    {"gtxtSchWidth", "Settings", "gtxtSchWidth", "gtxtSchWidth", SettingKind::Number, "4"},
    {"gSpnCIWidth", "Settings", "gSpnCIWidth", "gSpnCIWidth", SettingKind::Integer, "1"},
    {"gTxtBuffer(0)", "Settings", "gTxtBuffer(0)", "gTxtBuffer(0)", SettingKind::Number, "0.5"},
    {"gTxtBuffer(1)", "Settings", "gTxtBuffer(1)", "gTxtBuffer(1)", SettingKind::Number, "0.5"},
    {"gFontName", "Settings", "gFontName", "gFontName", SettingKind::Text, "Arial"},
    {"gHeaderLineSize", "Settings", "gHeaderLineSize", "gHeaderLineSize", SettingKind::Integer, "100"},
    {"gFooterLineSize", "Settings", "gFooterLineSize", "gFooterLineSize", SettingKind::Integer, "100"},
    {"gHeaderAlign", "Settings", "gHeaderAlign", "gHeaderAlign", SettingKind::Integer, "2"},
    {"gFooterAlign", "Settings", "gFooterAlign", "gFooterAlign", SettingKind::Integer, "1"},
    {"gHeaderLineHeight", "Settings", "gHeaderLineHeight", "gHeaderLineHeight", SettingKind::Integer, "100"},
    {"gFooterLineHeight", "Settings", "gFooterLineHeight", "gFooterLineHeight", SettingKind::Integer, "100"},
    {"gtxtRowBuffer", "Settings", "gtxtRowBuffer", "gtxtRowBuffer", SettingKind::Number, "1"},
    {"gtxtColBuffer", "Settings", "gtxtColBuffer", "gtxtColBuffer", SettingKind::Number, "1.2"},
    {"gPrinterFont", "Settings", "gPrinterFont", "gPrinterFont", SettingKind::Text, "Arial"},
    {"gPrinterPageWidth", "Settings", "gPrinterPageWidth", "gPrinterPageWidth", SettingKind::Integer, "1"},
    {"gPrinterPageHeight", "Settings", "gPrinterPageHeight", "gPrinterPageHeight", SettingKind::Integer, "1"},
    {"gPrinterPageType", "Settings", "gPrinterPageType", "gPrinterPageType", SettingKind::Text, ""},
    {"gPrinterOrientation", "Settings", "gPrinterOrientation", "gPrinterOrientation", SettingKind::Integer, "1"},
    {"gPrinterPageUnits", "Settings", "gPrinterPageUnits", "gPrinterPageUnits", SettingKind::Text, "in"},
    {"gPrinterMarginLeft", "Settings", "gPrinterMarginLeft", "gPrinterMarginLeft", SettingKind::Integer, "720"},
    {"gPrinterMarginRight", "Settings", "gPrinterMarginRight", "gPrinterMarginRight", SettingKind::Integer, "720"},
    {"gPrinterMarginTop", "Settings", "gPrinterMarginTop", "gPrinterMarginTop", SettingKind::Integer, "2160"},
    {"gPrinterMarginBottom", "Settings", "gPrinterMarginBottom", "gPrinterMarginBottom", SettingKind::Integer, "1440"},
    {"gPrinterMarginHeader", "Settings", "gPrinterMarginHeader", "gPrinterMarginHeader", SettingKind::Integer, "720"},
    {"gPrinterMarginFooter", "Settings", "gPrinterMarginFooter", "gPrinterMarginFooter", SettingKind::Integer, "1440"},
    {"gSpnSpaceAddRows", "Settings", "gSpnSpaceAddRows", "gSpnSpaceAddRows", SettingKind::Integer, "1"},
    {"gSpnSpaceAddcols", "Settings", "gSpnSpaceAddcols", "gSpnSpaceAddCols", SettingKind::Integer, "1"},
    {"gOptShorten", "Settings", "gOptShorten", "gOptShorten", SettingKind::Integer, "1"},
    {"gOptOnePage", "Settings", "gOptOnePage", "gOptOnePage", SettingKind::Integer, "1"},
    {"gPapers", "Settings", "gPapers", "gPapers", SettingKind::Text, "PowerPoint"},
    {"gOrientation", "Settings", "gOrientation", "gOrientation", SettingKind::Integer, "1"},
    {"gPaperWidth1", "Settings", "gPaperWidth1", "gPaperWidth1", SettingKind::Integer, "1000"},
    {"gPaperHeight1", "Settings", "gPaperHeight1", "gPaperHeight1", SettingKind::Integer, "750"},
    {"gMarginTop1", "Settings", "gMarginTop1", "gMarginTop1", SettingKind::Integer, "50"},
    {"gMarginLeft1", "Settings", "gMarginLeft1", "gMarginLeft1", SettingKind::Integer, "50"},
    {"gHeaderText", "Settings", "gHeaderText", "gHeaderText", SettingKind::Text, "Meta Analysis"},
    {"gFooterText", "Settings", "gFooterText", "gFooterText", SettingKind::Text, "Meta Analysis"},
    {"gTitleHeight", "Settings", "gTitleHeight", "gTitleHeight", SettingKind::Integer, "100"},
    {"gFooterHeight", "Settings", "gFooterHeight", "gFooterHeight", SettingKind::Integer, "100"},
    {"gSpnFooterHeight", "Settings", "gSpnFooterHeight", "gSpnFooterHeight", SettingKind::Integer, "100"},
    {"gSpnFooterLine", "Settings", "gSpnFooterLine", "gSpnFooterLine", SettingKind::Integer, "100"},
    {"gFooterText(1)", "Settings", "gFooterText(1)", "gFooterText(1)", SettingKind::Text, "Favours A"},
    {"gFooterText(2)", "Settings", "gFooterText(2)", "gFooterText(2)", SettingKind::Text, "Favours B"},
    {"gLabelText(1)", "Settings", "", "gLabelText(1)", SettingKind::Text, std::nullopt, "gFooterText(1)"},
    {"gLabelText(2)", "Settings", "", "gLabelText(2)", SettingKind::Text, std::nullopt, "gFooterText(2)"},
    {"gLabelsHeight", "Settings", "gLabelsHeight", "gLabelsHeight", SettingKind::Integer, "100"},
    {"gSpaceBetweenCols", "Settings", "gSpaceBetweenCols", "gSpaceBetweenCols", SettingKind::Number, "0.05"},
    {"gSpaceBetweenRows", "Settings", "gSpaceBetweenRows", "gSpaceBetweenRows", SettingKind::Number, "0.05"},
    {"gSchWidth", "Settings", "gSchWidth", "gSchWidth", SettingKind::Number, "0.3"},
    {"gSchBuffer(0)", "Settings", "gSchBuffer(0)", "gSchBuffer(0)", SettingKind::Number, "0.2"},
    {"gSchBuffer(1)", "Settings", "gSchBuffer(1)", "gSchBuffer(1)", SettingKind::Number, "0.2"},
    {"gPointSymbol(1)", "Settings", "gPointSymbol(1)", "gPointSymbol(1)", SettingKind::Integer, "3"},
    {"gPointSymbol(2)", "Settings", "gPointSymbol(2)", "gPointSymbol(2)", SettingKind::Integer, "7"},
    {"gPointSymbol(3)", "Settings", "gPointSymbol(3)", "gPointSymbol(3)", SettingKind::Integer, "7"},
    {"gProportional", "Settings", "gProportional", "gProportional", SettingKind::Integer, "2"},
    {"gMinSide", "Settings", "gMinSide", "gMinSide", SettingKind::Integer, "2"},
    {"gBaseSymbolSize", "Settings", "gBaseSymbolSize", "gBaseSymbolSize", SettingKind::Number, "0.8"},
    {"gCILine", "Settings", "gCILine", "gCILine", SettingKind::Integer, "20"},
    {"gVLine", "Settings", "gVLine", "gVLine", SettingKind::Integer, "10"},
    {"mBoldMainTitle", "Settings", "mBoldMainTitle", "mBoldMainTitle", SettingKind::Integer, "1"},
    {"mBoldSubTitle", "Settings", "mBoldSubTitle", "mBoldSubTitle", SettingKind::Integer, "1"},
    {"mFooterBold", "Settings", "mFooterBold", "mFooterBold", SettingKind::Integer, "1"},
    {"gFooterBold", "Settings", "", "gFooterBold", SettingKind::Integer, std::nullopt, "mFooterBold"},
    {"mHeaderBold", "Settings", "mHeaderBold", "mHeaderBold", SettingKind::Integer, "1"},
    {"mKeepEqual", "Settings", "mKeepEqual", "mKeepEqual", SettingKind::Integer, "1"},
    {"mLabelsBold", "Settings", "mLabelsBold", "mLabelsBold", SettingKind::Integer, "1"},
    {"mLabelsSameFont", "Settings", "mLabelsSameFont", "mLabelsSameFont", SettingKind::Integer, "1"},
    {"mShowFooter", "Settings", "mShowFooter", "mShowFooter", SettingKind::Integer, "1"},
    {"mShowFooterLine", "Settings", "mShowFooterLine", "mShowFooterLine", SettingKind::Integer, "1"},
    {"mShowHeader", "Settings", "mShowHeader", "mShowHeader", SettingKind::Integer, "1"},
    {"mShowHeaderLine", "Settings", "mShowHeaderLine", "mShowHeaderLine", SettingKind::Integer, "1"},
    {"mShowSe", "Settings", "mShowSe", "mShowSe", SettingKind::Integer, "1"},
    {"mShowVariance", "Settings", "mShowVariance", "mShowVariance", SettingKind::Integer, "0"},
    {"dBackColor(1)", "Settings", "dBackColor(1)", "dBackColor(1)", SettingKind::Color, "16777215"},
    {"dLineColorA(1)", "Settings", "dLineColorA(1)", "dLineColorA(1)", SettingKind::Color, "0"},
    {"dLineColorB(1)", "Settings", "dLineColorB(1)", "dLineColorB(1)", SettingKind::Color, "0"},
    {"dCaseColor(1)", "Settings", "dCaseColor(1)", "dCaseColor(1)", SettingKind::Color, "0"},
    {"dSummaryColor(1)", "Settings", "dSummaryColor(1)", "dSummaryColor(1)", SettingKind::Color, "0"},
    {"dTitleColor(1)", "Settings", "dTitleColor(1)", "dTitleColor(1)", SettingKind::Color, "0"},
    {"dFooterColor(1)", "Settings", "dFooterColor(1)", "dFooterColor(1)", SettingKind::Color, "0"},
    {"dLabelColor(1)", "Settings", "dLabelColor(1)", "dLabelColor(1)", SettingKind::Color, "0"},
    {"dSubColor(1)", "Settings", "dSubColor(1)", "dSubColor(1)", SettingKind::Color, "0"},
    {"dTextColor(1)", "Settings", "dTextColor(1)", "dTextColor(1)", SettingKind::Color, "0"},
    {"dScaleColor(1)", "Settings", "dScaleColor(1)", "dScaleColor(1)", SettingKind::Color, "0"},
    {"dBorderColor(1)", "Settings", "dBorderColor(1)", "dBorderColor(1)", SettingKind::Color, "0"},
    {"dBorderWidth(1)", "Settings", "dBorderWidth(1)", "dBorderWidth(1)", SettingKind::Integer, "1"},
    {"dBorderOn(1)", "Settings", "dBorderOn(1)", "dBorderOn(1)", SettingKind::Integer, "0"},
    {"dBackColor(2)", "Settings", "dBackColor(2)", "dBackColor(2)", SettingKind::Color, "9175040"},
    {"dLineColorA(2)", "Settings", "dLineColorA(2)", "dLineColorA(2)", SettingKind::Color, "16777215"},
    {"dLineColorB(2)", "Settings", "dLineColorB(2)", "dLineColorB(2)", SettingKind::Color, "16777215"},
    {"dCaseColor(2)", "Settings", "dCaseColor(2)", "dCaseColor(2)", SettingKind::Color, "16777215"},
    {"dSummaryColor(2)", "Settings", "dSummaryColor(2)", "dSummaryColor(2)", SettingKind::Color, "16777215"},
    {"dTitleColor(2)", "Settings", "dTitleColor(2)", "dTitleColor(2)", SettingKind::Color, "16777215"},
    {"dFooterColor(2)", "Settings", "dFooterColor(2)", "dFooterTitle(2)", SettingKind::Color, "16777215"},
    {"dLabelColor(2)", "Settings", "dLabelColor(2)", "dLabelColor(2)", SettingKind::Color, "16777215"},
    {"dSubColor(2)", "Settings", "dSubColor(2)", "dSubColor(2)", SettingKind::Color, "16777215"},
    {"dTextColor(2)", "Settings", "dTextColor(2)", "dTextColor(2)", SettingKind::Color, "16777215"},
    {"dScaleColor(2)", "Settings", "dScaleColor(2)", "dScaleColor(2)", SettingKind::Color, "16777215"},
    {"dBorderColor(2)", "Settings", "dBorderColor(2)", "dBorderColor(2)", SettingKind::Color, "16777215"},
    {"dBorderWidth(2)", "Settings", "dBorderWidth(2)", "dBorderWidth(2)", SettingKind::Integer, "1"},
    {"dBorderOn(2)", "Settings", "dBorderOn(1)", "dBorderOn(2)", SettingKind::Integer, "1"},
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
