#pragma once

#include <cstddef>
#include <string>

namespace KM::Tool {

/// Standard input, read in a way that Ctrl-C ends the wait for it.
class StandardInput {
public:
    static bool IsTerminal();

    /// The next line, without its end.
    /// @return  false at the end of the input
    /// @throws XUserAbort  if the user wants to stop
    bool TakeLine(std::string& line);

    /// All up to the end of the input, or somewhat more than so many bytes.
    /// @throws XUserAbort  if the user wants to stop
    std::string TakeAll(std::size_t most);

private:
    void ReadMore();
    bool Wait(int milliseconds) const;

    std::string bytes_;
    bool isAtEnd_ = false;
};

}  // namespace KM::Tool
