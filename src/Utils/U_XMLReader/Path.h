#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace KM::XML {

// Reads a dotted path part by part, in place.
//
//   path = { blank | "." | other };   blanks are dropped wherever they stand; each "." opens a new part, and so does
//                                     the first other character, if no "." came before it
//
// So "a.b" has the parts a and b, ".b" the one part b, "a..b" the parts a, empty, b, and "  " has none.
class PathParts {
public:
    explicit PathParts(std::string_view path) : rest_(path), hasBlanks_(path.find(' ') != std::string_view::npos) {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size()));
        hasNext_ = !rest_.empty();
        if (hasNext_ && rest_.front() == '.') rest_.remove_prefix(1);
    }

    /// False at the end. The part stays valid until the next call.
    bool Next(std::string_view& part) {
        if (!hasNext_) return false;
        const std::size_t dot = rest_.find('.');
        part = rest_.substr(0, dot);
        if (hasBlanks_) part = WithoutBlanks(part);
        hasNext_ = dot != std::string_view::npos;
        if (hasNext_) rest_.remove_prefix(dot + 1);
        return true;
    }

private:
    std::string_view WithoutBlanks(std::string_view part) {
        dense_ = part;
        std::erase(dense_, ' ');
        return dense_;
    }

    std::string_view rest_;
    std::string dense_;
    bool hasBlanks_;
    bool hasNext_;
};

}  // namespace KM::XML
