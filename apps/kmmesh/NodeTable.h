#pragma once

#include <initializer_list>
#include <string>

#include "Geometry/Point.h"

namespace KM::Tool {

/// A text with a line for each node: its number, its coordinates and what belongs to it, with nine digits and blanks
/// between. Lines that begin with "#" are for people; the last of these names the columns.
class NodeTable {
public:
    /// @param heading  lines that stand above
    /// @param columns  names of what stands behind number and coordinates, as "nx ny nz"
    NodeTable(const std::string& heading, const std::string& columns);

    void Add(int node, const TPoint<double>& point, std::initializer_list<double> values);

    const std::string& Text() const { return text_; }

private:
    void AddNumber(double value);

    std::string text_;
};

}  // namespace KM::Tool
