#pragma once

#include <string>

#include "Failure.h"
#include "Utils/U_Parser/ParsingException.h"

namespace KM::Tool {

/// A text of the expression language is at fault, or its evaluation failed. In a text of several lines the message says line
/// and column, from 1.
class FailureInText : public Failure {
public:
    /// @param subject  what the text is called: a file, or "expression"
    FailureInText(const std::string& subject, const std::string& text, const Parsing::ParsingException& failure);

    /// Lines to show below the message: the line at fault, and below it a caret under the token, if it is known. Without
    /// that the text, if it is a single line. Cut to what fits a screen; empty if there is nothing to show.
    const std::string& Excerpt() const { return excerpt_; }

private:
    std::string excerpt_;
};

/// Tells people of a failure in one line, and shows its excerpt below, if it has one.
void Complain(const KmException& failure);

}  // namespace KM::Tool
