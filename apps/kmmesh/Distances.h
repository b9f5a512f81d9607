#pragma once

#include <string>
#include <vector>

namespace KM::Tool {

/// Distances from a text such as "0, 0.05, 0.2%": numbers in units of the part, or with "%" shares of its diagonal;
/// commas or blanks between them.
///
/// @param diagonal  of the part, in its units
/// @return          ascending
/// @throws Failure  for anything else, and for a text without numbers
std::vector<double> DistancesOf(const std::string& text, double diagonal);

/// One of these, greater than 0: what work with a tolerance or a limit takes.
/// @throws Failure  for anything else
double LengthOf(const std::string& text, double diagonal);

// What is wrong with the text; empty if nothing is.
std::string FaultOfLength(const std::string& text);
std::string FaultOfDistances(const std::string& text);

}  // namespace KM::Tool
