#pragma once
// A column of the working table: one value of one type per row, and the value
// a new row takes. The table keeps a list of its columns, so that a change of
// the rows (inserted rows removed, summary blocks added) is one sweep of all
// of them, whatever columns later work adds.
#include <cstddef>
#include <span>
#include <vector>

namespace synthara::analysis {

class ColumnBase {
  public:
    ColumnBase() = default;
    ColumnBase(const ColumnBase&) = delete;
    ColumnBase& operator=(const ColumnBase&) = delete;
    virtual ~ColumnBase() = default;

    // Cut short, or lengthened with blank rows.
    virtual void Resize(int rows) = 0;
    // New row i is old row source[i], or a blank row where source[i] is -1.
    virtual void Rebuild(const std::vector<int>& source) = 0;
};

// The columns of one table, in the order they were made.
class ColumnList {
  public:
    void Add(ColumnBase& column) { columns_.push_back(&column); }
    void Resize(int rows) const {
        for (ColumnBase* c : columns_)
            c->Resize(rows);
    }
    void Rebuild(const std::vector<int>& source) const {
        for (ColumnBase* c : columns_)
            c->Rebuild(source);
    }

  private:
    std::vector<ColumnBase*> columns_;
};

template <typename T>
class Column final : public ColumnBase {
  public:
    // A column of the list's table: it follows the table's rows from now on.
    Column(ColumnList& list, T blank) : blank_(blank) { list.Add(*this); }
    // A column the table holds apart (made for some runs and models only).
    Column(int rows, T blank) : values_(static_cast<std::size_t>(rows), blank), blank_(blank) {}

    T operator[](int row) const { return values_[static_cast<std::size_t>(row)]; }
    T& operator[](int row) { return values_[static_cast<std::size_t>(row)]; }
    int Size() const { return static_cast<int>(values_.size()); }
    T Blank() const { return blank_; }
    void Fill(T value) { values_.assign(values_.size(), value); }
    std::span<const T> Values() const { return values_; }

    void Resize(int rows) override { values_.resize(static_cast<std::size_t>(rows), blank_); }
    void Rebuild(const std::vector<int>& source) override {
        std::vector<T> out;
        out.reserve(source.size());
        for (const int from : source) {
            out.push_back(from >= 0 && static_cast<std::size_t>(from) < values_.size()
                              ? values_[static_cast<std::size_t>(from)]
                              : blank_);
        }
        values_ = std::move(out);
    }

  private:
    std::vector<T> values_;
    T blank_;
};

}  // namespace synthara::analysis
