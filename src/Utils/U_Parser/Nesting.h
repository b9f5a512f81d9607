#pragma once

#include "Utils/U_Parser/ParsingException.h"
#include "Utils/U_Parser/Stages.h"

namespace KM::Parsing {

/// Counts the levels of a tree that a call is about to enter, as long as it is inside.
class Nesting {
public:
    Nesting(SessionLink& link, const Expression& tree) : depth_(link.depth), levels_(tree.Depth()) {
        if (depth_ + levels_ > MaxNesting)
            throw ParsingException(
                "In Function. Calls and parameters are nested deeper than " + std::to_string(MaxNesting) + " levels!",
                __LINE__);
        depth_ += levels_;
    }
    ~Nesting() { depth_ -= levels_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    int& depth_;
    int levels_;
};

}  // namespace KM::Parsing
