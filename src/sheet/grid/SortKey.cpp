#include "sheet/grid/SortKey.h"

#include <algorithm>
#include <cmath>

namespace synthara::sheet {

namespace {

char Fold(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

int CompareNumbers(double a, double b) {
    const bool nanA = std::isnan(a);
    const bool nanB = std::isnan(b);
    if (nanA || nanB) return nanA == nanB ? 0 : (nanA ? 1 : -1);
    if (a == b) return 0;
    return a < b ? -1 : 1;
}

}  // namespace

int CompareFolded(std::string_view a, std::string_view b) {
    const std::size_t n = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < n; ++i) {
        const auto ca = static_cast<unsigned char>(Fold(a[i]));
        const auto cb = static_cast<unsigned char>(Fold(b[i]));
        if (ca != cb) return ca < cb ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}

SortKey MakeSortKey(const Cell& cell) {
    SortKey key;
    double value = 0;
    if (cell.TryNumber(value)) {
        key.rank = SortKey::Number;
        key.number = value;
    } else if (cell.IsText()) {
        key.rank = SortKey::Text;
        key.text = cell.TextView();
    }
    return key;
}

int CompareSortKeys(const SortKey& a, const SortKey& b) {
    if (a.rank != b.rank) return a.rank < b.rank ? -1 : 1;
    switch (a.rank) {
        case SortKey::Number:
            return CompareNumbers(a.number, b.number);
        case SortKey::Text:
            return CompareFolded(a.text, b.text);
        case SortKey::Empty:
            break;
    }
    return 0;
}

}  // namespace synthara::sheet
