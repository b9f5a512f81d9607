#pragma once

#include <cstddef>
#include <vector>

namespace KM {

/// A square matrix, row by row in one array.
template <class T>
class Matrix {
public:
    /// All zeros. A negative dimension counts as 0.
    explicit Matrix(int dimension)
        : dimension_(dimension > 0 ? dimension : 0),
          items_(static_cast<std::size_t>(dimension_) * static_cast<std::size_t>(dimension_)) {}

    int Dimension() const { return dimension_; }

    /// No check is made: both indices must lie in [0, Dimension()).
    T& operator()(int row, int column) { return items_[Index(row, column)]; }
    const T& operator()(int row, int column) const { return items_[Index(row, column)]; }

private:
    std::size_t Index(int row, int column) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(dimension_) + static_cast<std::size_t>(column);
    }

    int dimension_;
    std::vector<T> items_;
};

}  // namespace KM
