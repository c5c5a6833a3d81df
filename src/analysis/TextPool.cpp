#include "analysis/TextPool.h"

#include <algorithm>
#include <numeric>

#include "sheet/grid/Cell.h"
#include "sheet/grid/SortKey.h"

namespace synthara::analysis {

TextPool::TextPool() {
    texts_.emplace_back();
    index_.emplace(std::string_view(texts_.front()), EmptyText);
}

Code TextPool::Intern(std::string_view text) {
    if (text.empty()) return EmptyText;
    if (const auto hit = index_.find(text); hit != index_.end()) return hit->second;
    const auto code = static_cast<Code>(texts_.size());
    texts_.emplace_back(text);
    index_.emplace(std::string_view(texts_.back()), code);
    return code;
}

const std::vector<std::uint32_t>& TextPool::SortRanks() const {
    if (ranks_.size() == texts_.size()) return ranks_;
    // A number's text reads back to the same double, so the text alone gives
    // the key the sheet's sort makes of the cell. Text is folded once here,
    // not at every comparison; folded texts in byte order are the sheet's
    // order without regard to case.
    struct Key {
        sheet::SortKey::Rank rank = sheet::SortKey::Empty;
        double number = 0;
        std::string folded;
    };
    std::vector<Key> keys(texts_.size());
    for (std::size_t i = 1; i < texts_.size(); ++i) {
        Key& key = keys[i];
        if (sheet::ParseNumber(texts_[i], key.number)) {
            key.rank = sheet::SortKey::Number;
            continue;
        }
        key.rank = sheet::SortKey::Text;
        key.folded = texts_[i];
        for (char& c : key.folded)
            if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    const auto compare = [&](Code a, Code b) {
        const Key& x = keys[a];
        const Key& y = keys[b];
        if (x.rank != y.rank) return x.rank < y.rank ? -1 : 1;
        if (x.rank == sheet::SortKey::Number) {
            sheet::SortKey kx, ky;
            kx.rank = ky.rank = sheet::SortKey::Number;
            kx.number = x.number;
            ky.number = y.number;
            return sheet::CompareSortKeys(kx, ky);
        }
        const int c = x.folded.compare(y.folded);
        return c < 0 ? -1 : (c > 0 ? 1 : 0);
    };
    std::vector<Code> order(texts_.size());
    std::iota(order.begin(), order.end(), Code{0});
    std::sort(order.begin(), order.end(), [&](Code a, Code b) { return compare(a, b) < 0; });
    ranks_.assign(texts_.size(), 0);
    std::uint32_t rank = 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (i > 0 && compare(order[i - 1], order[i]) != 0) ++rank;
        ranks_[order[i]] = rank;
    }
    return ranks_;
}

}  // namespace synthara::analysis
