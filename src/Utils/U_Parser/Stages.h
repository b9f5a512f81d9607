#pragma once

#include <string>
#include <vector>

#include "Utils/U_Parser/ParsingSession.h"
#include "Utils/U_Parser/Words.h"

namespace KM::Parsing {

/// Levels of brackets, of a tree, and of the trees that calls enter. Evaluation takes a call of the processor's stack for
/// each level, so this is what keeps it from running over.
inline constexpr int MaxNesting = 10000;

// The stages from a text to a tree, with the position of each token for failures.

std::vector<Token> CutTokens(const std::string& text, bool dropSeparators);

/// Infix to postfix.
std::vector<Token> ToPostfix(ParsingSession& session, const std::vector<Token>& tokens);

Expression* CompileTokens(ParsingSession& session, const std::vector<Token>& postfix);

}  // namespace KM::Parsing
