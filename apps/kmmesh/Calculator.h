#pragma once

#include <sstream>
#include <string>

#include "Utils/U_Parser/ParsingSession.h"

namespace KM::Tool {

/// A session of the expression language that prints what it is asked. Beside the vocabulary of the language it has
/// `XMLValue`, which reads the present settings, and `WriteLine`, which writes a line to standard output.
class Calculator {
public:
    /// @param isExact  numbers with as many digits as tell them from all others, instead of six
    explicit Calculator(bool isExact);
    Calculator(const Calculator&) = delete;
    Calculator& operator=(const Calculator&) = delete;

    /// Evaluates a text once, and prints the lines that it writes, then its value. What is there for its effect alone has
    /// none: a declaration, an assignment to a text, `WriteLine`, `Dump`, `Swap` and conditions.
    /// @param subject  what a failure calls the text
    /// @throws FailureInText  the lines up to the failure are printed, and variables stay as they are by then
    void Evaluate(const std::string& text, const std::string& subject);

    /// A table of all names that the session knows, with number of operands and help.
    std::string Catalogue() const;

private:
    std::string ValueOf(Parsing::Expression& tree) const;
    void PrintWritten();

    bool isExact_;
    std::ostringstream written_;
    Parsing::ParsingSession session_;
};

}  // namespace KM::Tool
