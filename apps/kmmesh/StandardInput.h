#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace KM::Tool {

/// Standard input, read in a way that Ctrl-C ends the wait for it.
class StandardInput {
public:
    static bool IsTerminal();

    /// The next line, without its end.
    /// @param ask  shows that a line is wanted; a Ctrl-C from then on is not lost
    /// @return     false at the end of the input
    /// @throws XUserAbort  if the user wants to stop
    bool TakeLine(const std::function<void()>& ask, std::string& line);

    /// All up to the end of the input, or somewhat more than so many bytes.
    /// @throws XUserAbort  if the user wants to stop
    std::string TakeAll(std::size_t most);

private:
    void ReadMore();

    std::string bytes_;
    bool isAtEnd_ = false;
};

}  // namespace KM::Tool
