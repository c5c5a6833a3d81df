#pragma once
// What a format tells its procedure: the meaning of each role, and which
// variant of the procedure's family the format is. A procedure reads its
// entries by meaning, never by their place in the block, so the catalogue
// alone says where a value stands.
#include <array>
#include <cstdint>
#include <variant>

namespace synthara::sheet {

// The meaning of a role's value. Each family adds the meanings its
// procedure reads; None is the meaning of no role of the catalogue.
enum class RoleKind : std::uint8_t {
    None,
    // Two-group event data, group A and group B.
    EventsA,
    NonEventsA,
    TotalNA,
    RateA,
    EventsB,
    NonEventsB,
    TotalNB,
    RateB,
    // The correlation between paired arms, entered by the user.
    ExternalCorrelation,
    // A matched table counts pairs: S both with the event, T group A only,
    // U group B only, V neither.
    PairsBothEvents,
    PairsOnlyA,
    PairsOnlyB,
    PairsBothNonEvents,
    // Case-control tables: exposure counted among cases and among controls.
    ExposedCases,
    UnexposedCases,
    TotalCases,
    PropnCasesExposed,
    ExposedControls,
    UnexposedControls,
    TotalControls,
    PropnControlsExposed,
    // Person-time in two groups (events as EventsA and EventsB).
    PersonYearsA,
    PersonYearsB,
    PYRateA,  // events per person-year
    PYRateB,
    // One group.
    Events,
    NonEvents,
    SampleSize,
    EventRate,  // a proportion
    PersonYears,
    PYRate,  // events per person-year
    Mean,
    SD,
    StdErr,
    Variance,
    LowerLimit,
    UpperLimit,
    ConfidenceLevel,
    // Peto's observed minus expected and its variance.
    PetoOE,
    PetoV,
    // A chi-squared test of a 2-by-2 table.
    ChiSquared,
    EffectDirection,
    // Means of two groups, independent or paired (sample sizes as TotalNA
    // and TotalNB, or SampleSize for pairs).
    MeanA,
    SDA,
    MeanB,
    SDB,
    MeanDifference,
    CommonSD,  // pooled within groups, or of the paired differences
    CohensD,
    TValue,
    PValue,
    Tails,
    PreMean,
    PreSD,
    PostMean,
    PostSD,
    PrePostCorrelation,
    // Two groups each measured before and after.
    PreMeanA,
    PreSDA,
    PostMeanA,
    PostSDA,
    MeanChangeA,
    ChangeSDA,
    TChangeA,
    PChangeA,
    PreMeanB,
    PreSDB,
    PostMeanB,
    PostSDB,
    MeanChangeB,
    ChangeSDB,
    TChangeB,
    PChangeB,
    FValue,
    StandardizeBy,
    // An effect the user computed: a ratio as it is, or its log; a
    // difference or a generic estimate; g, r or Fisher's Z (with LowerLimit,
    // UpperLimit, ConfidenceLevel, StdErr and Variance for its spread).
    Ratio,
    LogRatio,
    PointEstimate,
    HedgesG,
    Correlation,
    FisherZ,
    // Reliabilities of the two measures and the range restriction of a correlation.
    Rxx,
    Ryy,
    RangeRestriction,
};

// Two-group event data: what the user typed for each group.
enum class EventsEntry : std::uint8_t {
    EventsAndN,
    NonEventsAndN,
    EventsAndNonEvents,
    RateAndN,
    MatchedPairs,
};

struct EventsLayout {
    EventsEntry entry = EventsEntry::EventsAndN;
    bool paired = false;  // the arms are the same subjects (matched or with a correlation)
};

// The four roles a 2-by-2 table is built from, in the order they are entered.
constexpr std::array<RoleKind, 4> TableRoles(EventsEntry entry) {
    using enum RoleKind;
    switch (entry) {
        case EventsEntry::EventsAndN:
            return {EventsA, TotalNA, EventsB, TotalNB};
        case EventsEntry::NonEventsAndN:
            return {NonEventsA, TotalNA, NonEventsB, TotalNB};
        case EventsEntry::EventsAndNonEvents:
            return {EventsA, NonEventsA, EventsB, NonEventsB};
        case EventsEntry::RateAndN:
            return {RateA, TotalNA, RateB, TotalNB};
        case EventsEntry::MatchedPairs:
            return {PairsBothEvents, PairsOnlyA, PairsOnlyB, PairsBothNonEvents};
    }
    return {};
}

// A paired table that is not matched takes the arms' correlation from the user.
constexpr bool NeedsExternalCorrelation(const EventsLayout& layout) {
    return layout.paired && layout.entry != EventsEntry::MatchedPairs;
}

// Case-control data: what the user typed for cases and for controls.
enum class CaseControlEntry : std::uint8_t {
    ExposedAndUnexposed,
    ExposedAndTotal,
    ProportionAndTotal
};
struct CaseControlLayout {
    CaseControlEntry entry = CaseControlEntry::ExposedAndUnexposed;
};

// Events over person-time in two groups, or in one: events or a rate per person-year.
struct PersonYearsLayout {
    bool rates = false;
};
struct OneGroupPYLayout {
    bool rate = false;
};

// One proportion: the entries as in one arm of a two-group table.
struct OneGroupEventsLayout {
    EventsEntry entry = EventsEntry::EventsAndN;
};

// One mean, with what gives its spread.
enum class MeanEntry : std::uint8_t { SDAndN, StdErr, Variance, Limits };
struct OneGroupMeansLayout {
    MeanEntry entry = MeanEntry::SDAndN;
};

// Means of two groups: what was entered besides the sample sizes. The
// independent and the paired families share the words.
enum class MeansEntry : std::uint8_t {
    MeansAndSD,
    DifferenceAndSD,
    StdDiff,
    MeansAndT,
    DifferenceAndT,
    SampleSizeAndT,
    MeansAndP,
    DifferenceAndP,
    SampleSizeAndP,
};
struct MeansLayout {
    MeansEntry entry = MeansEntry::MeansAndSD;
};
struct PairedMeansLayout {
    MeansEntry entry = MeansEntry::DifferenceAndSD;
};

// What a format of a t- or p-value gives besides the sample sizes.
struct MeansTestKind {
    bool means = false;       // both means
    bool difference = false;  // their difference
    bool pValue = false;      // a p-value rather than a t-value
};
constexpr MeansTestKind TestKindOf(MeansEntry entry) {
    switch (entry) {
        case MeansEntry::MeansAndT:
            return {true, false, false};
        case MeansEntry::DifferenceAndT:
            return {false, true, false};
        case MeansEntry::MeansAndP:
            return {true, false, true};
        case MeansEntry::DifferenceAndP:
            return {false, true, true};
        case MeansEntry::SampleSizeAndP:
            return {false, false, true};
        default:
            return {};
    }
}

// Two groups measured before and after: how each group's change is given.
enum class PrePostEntry : std::uint8_t {
    ChangeSDDifference,  // mean change, SD of the change
    MeansSDDifference,   // means pre and post, SD of the change
    ChangeSDPrePost,     // mean change, SD pre and SD post
    MeansSDPrePost,      // means pre and post, SD pre and SD post
    ChangeT,
    MeansT,
    ChangeP,
    MeansP,
    ChangeF,
    MeansF,
    FOnly,
};
struct PrePostLayout {
    PrePostEntry entry = PrePostEntry::MeansSDPrePost;
};

// An effect computed by the user, given with what gives its spread.
enum class PointForm : std::uint8_t { Limits, StdErr, Variance };

// A ratio analysed in logs: which ratio it is.
enum class RatioFamily : std::uint8_t { Odds, Risk, Rate, Hazard, Generic };
struct PointLogLayout {
    RatioFamily family = RatioFamily::Odds;
    PointForm form = PointForm::Limits;
};

// A difference analysed as it is.
enum class DifferenceFamily : std::uint8_t { Risk, Rate, Generic };
struct PointLayout {
    DifferenceFamily family = DifferenceFamily::Risk;
    PointForm form = PointForm::Limits;
};

// A difference in means computed by the user: which index was given.
enum class MeansIndex : std::uint8_t { RawDifference, CohensD, HedgesG };
struct PointTIndepLayout {
    MeansIndex given = MeansIndex::RawDifference;
    PointForm form = PointForm::Limits;
};
struct PointTPairedLayout {
    MeansIndex given = MeansIndex::RawDifference;
    PointForm form = PointForm::Limits;
};

// A correlation, or its Fisher's Z, with what gives its sample size or spread.
enum class CorrEntry : std::uint8_t {
    CorrAndN,
    CorrAndT,
    TAndN,
    PAndN,
    CorrAndSE,
    CorrAndVariance,
    ZAndN,
    ZAndSE,
    ZAndVariance,
    Artifacts,
};
struct PointCorrLayout {
    CorrEntry entry = CorrEntry::CorrAndN;
};

// Formats that are the only one of their procedure.
struct PetoLayout {};
struct ChiSquareLayout {};

// A format's variant within its procedure's family: one type per family.
// std::monostate for names a procedure accepts without having a table for
// them.
using FormatLayout =
    std::variant<std::monostate, EventsLayout, CaseControlLayout, PersonYearsLayout,
                 OneGroupPYLayout, OneGroupEventsLayout, OneGroupMeansLayout, PetoLayout,
                 ChiSquareLayout, MeansLayout, PairedMeansLayout, PrePostLayout, PointLogLayout,
                 PointLayout, PointTIndepLayout, PointTPairedLayout, PointCorrLayout>;

}  // namespace synthara::sheet
