#include "NodeTable.h"

#include <charconv>
#include <sstream>

namespace KM::Tool {

NodeTable::NodeTable(const std::string& heading, const std::string& columns) {
    std::istringstream lines(heading);
    for (std::string line; std::getline(lines, line);) text_ += "# " + line + '\n';
    text_ += "# node x y z " + columns + '\n';
}

void NodeTable::Add(int node, const TPoint<double>& point, std::initializer_list<double> values) {
    text_ += std::to_string(node);
    for (const double coordinate : {point.X, point.Y, point.Z}) AddNumber(coordinate);
    for (const double value : values) AddNumber(value);
    text_ += '\n';
}

void NodeTable::AddNumber(double value) {
    constexpr int digits = 9;  // all that single precision holds
    char buffer[32];
    const double unsignedZero = value + 0.0;
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, unsignedZero, std::chars_format::general, digits);
    text_ += ' ';
    text_.append(buffer, end.ptr);
}

}  // namespace KM::Tool
