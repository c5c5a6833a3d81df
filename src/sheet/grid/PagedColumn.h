#pragma once
// One column of values addressed by row, stored in pages of kPageRows rows. A
// page exists only while one of its rows holds something other than the
// empty value, so the hundreds of columns a sheet carries for formats its
// rows do not use cost a pointer per page, not a value per row.
//
// Copies share their table of pages, and the pages in it, until one side
// writes: it then copies the table and the page written for itself. A copy
// of a whole sheet, as undo keeps one, costs a pointer per column and grows
// only by the tables and pages changed afterwards.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace synthara::sheet {

template <typename T>
class PagedColumn {
  public:
    static constexpr std::size_t kPageShift = 8;
    static constexpr std::size_t kPageRows = std::size_t{1} << kPageShift;

    PagedColumn() = default;

    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    // True when no row holds anything.
    bool AllEmpty() const {
        return std::none_of(Pages().begin(), Pages().end(), [](const auto& p) { return !!p; });
    }

    // The value of a row; the empty value beyond the end.
    const T& operator[](std::size_t row) const {
        if (row >= size_) return Empty();
        const Page* page = Pages()[row >> kPageShift].get();
        return page ? page->values[row & (kPageRows - 1)] : Empty();
    }

    // Writes a row's value; beyond the end nothing happens. Writing the empty
    // value where a page is absent allocates nothing, and a page whose last
    // value is emptied is given back.
    void Set(std::size_t row, T value) {
        if (row >= size_) return;
        const bool emptyValue = IsEmpty(value);
        if (emptyValue && !Pages()[row >> kPageShift]) return;
        auto& slot = OwnPages()[row >> kPageShift];
        if (!slot) {
            slot = std::make_shared<Page>();
        } else {
            Own(slot);
        }
        T& target = slot->values[row & (kPageRows - 1)];
        const bool wasEmpty = IsEmpty(target);
        target = std::move(value);
        if (wasEmpty && !emptyValue) {
            ++slot->used;
        } else if (!wasEmpty && emptyValue && --slot->used == 0) {
            slot.reset();
        }
    }

    // The slot of a row about to be given a value that is not empty, for
    // writing in place; nullptr beyond the end.
    T* Fill(std::size_t row) {
        if (row >= size_) return nullptr;
        auto& slot = OwnPages()[row >> kPageShift];
        if (!slot)
            slot = std::make_shared<Page>();
        else
            Own(slot);
        T& target = slot->values[row & (kPageRows - 1)];
        if (IsEmpty(target)) ++slot->used;
        return &target;
    }

    // New rows are empty; rows cut off are dropped.
    void resize(std::size_t rows) {
        if (rows < size_) {
            for (std::size_t row = rows; row < std::min(size_, PageCount(rows) * kPageRows); ++row)
                Set(row, T{});
        }
        if (PageCount(rows) != Pages().size()) OwnPages().resize(PageCount(rows));
        size_ = rows;
    }

    // Empties every row from `first` on; whole pages are given back at once.
    void ClearFrom(std::size_t first) {
        if (first >= size_ || !AnyIn(first, size_ - 1)) return;
        PageTable& pages = OwnPages();
        for (std::size_t p = first >> kPageShift; p < pages.size(); ++p) {
            if (!pages[p]) continue;
            const std::size_t base = p * kPageRows;
            if (base >= first) {
                pages[p].reset();
                continue;
            }
            for (std::size_t row = first; row < std::min(base + kPageRows, size_); ++row)
                Set(row, T{});
        }
    }

    // Takes the value at `from` out and reinserts it so that it ends at `to`.
    void Move(std::size_t from, std::size_t to) {
        if (from >= size_ || to >= size_ || from == to) return;
        const std::size_t low = std::min(from, to), high = std::max(from, to);
        if (!AnyIn(low, high)) return;
        T moving = Take(from);
        if (from < to) {
            for (std::size_t row = from; row < to; ++row)
                Set(row, Take(row + 1));
        } else {
            for (std::size_t row = from; row > to; --row)
                Set(row, Take(row - 1));
        }
        Set(to, std::move(moving));
    }

    // Rows first.. take the values of rows first + order[0], first + order[1], ...
    void ApplyOrder(std::size_t first, const std::vector<int>& order) {
        if (order.empty() || first + order.size() > size_) return;
        if (!AnyIn(first, first + order.size() - 1)) return;
        std::vector<T> sorted;
        sorted.reserve(order.size());
        for (int from : order)
            sorted.push_back((*this)[first + static_cast<std::size_t>(from)]);
        for (std::size_t k = 0; k < sorted.size(); ++k)
            Set(first + k, std::move(sorted[k]));
    }

    // The same rows with the same values. Pages a copy still shares are
    // equal without being read.
    friend bool operator==(const PagedColumn& a, const PagedColumn& b) {
        if (a.size_ != b.size_) return false;
        if (a.pages_ == b.pages_) return true;
        for (std::size_t p = 0; p < a.Pages().size(); ++p) {
            const Page* x = a.Pages()[p].get();
            const Page* y = b.Pages()[p].get();
            if (x == y) continue;
            if (x == nullptr || y == nullptr || x->values != y->values) return false;
        }
        return true;
    }

    // Calls visit(row, value) for every row that holds something, in row order.
    template <typename Visit>
    void ForEachSet(Visit&& visit) const {
        for (std::size_t p = 0; p < Pages().size(); ++p) {
            const Page* page = Pages()[p].get();
            if (!page) continue;
            const std::size_t base = p * kPageRows;
            const std::size_t end = std::min(kPageRows, size_ - base);
            for (std::size_t k = 0; k < end; ++k)
                if (!IsEmpty(page->values[k])) visit(base + k, page->values[k]);
        }
    }

  private:
    struct Page {
        std::array<T, kPageRows> values{};
        std::uint32_t used = 0;  // values that are not empty
    };
    using PageTable = std::vector<std::shared_ptr<Page>>;

    const PageTable& Pages() const {
        static const PageTable kNone;
        return pages_ ? *pages_ : kNone;
    }
    // The table of pages, this column's own, before a write.
    PageTable& OwnPages() {
        if (!pages_)
            pages_ = std::make_shared<PageTable>(PageCount(size_));
        else if (pages_.use_count() > 1)
            pages_ = std::make_shared<PageTable>(*pages_);
        return *pages_;
    }
    // Makes a page shared with a copy this column's own before a write.
    static void Own(std::shared_ptr<Page>& slot) {
        if (slot.use_count() > 1) slot = std::make_shared<Page>(*slot);
    }
    static bool IsEmpty(const T& value) {
        if constexpr (requires { value.IsEmpty(); })
            return value.IsEmpty();
        else
            return value == T{};
    }
    static const T& Empty() {
        static const T kEmpty{};
        return kEmpty;
    }
    static std::size_t PageCount(std::size_t rows) { return (rows + kPageRows - 1) >> kPageShift; }

    T Take(std::size_t row) {
        T value = (*this)[row];
        Set(row, T{});
        return value;
    }
    // True when some row in low..high holds something.
    bool AnyIn(std::size_t low, std::size_t high) const {
        for (std::size_t p = low >> kPageShift; p <= (high >> kPageShift); ++p)
            if (Pages()[p]) return true;
        return false;
    }

    // Never null but in a column moved from, which reads as empty.
    std::shared_ptr<PageTable> pages_ = std::make_shared<PageTable>();
    std::size_t size_ = 0;
};

}  // namespace synthara::sheet
