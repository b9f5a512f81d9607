#pragma once

#include <cstddef>
#include <deque>
#include <string>

namespace KM::Console {

/// What a text console holds: rows of characters with a cursor. The oldest row goes when the buffer is full. A dump of
/// the console reads it, also where no terminal is there to be read.
class ScreenBuffer {
public:
    ScreenBuffer(int columns, int rows);

    /// Keeps the newest rows, each cut to the new width.
    void Resize(int columns, int rows);
    void Clear();
    /// Line feed, carriage return, tabulator and back-space move the cursor; other bytes below 32 are dropped; a full
    /// row goes on in the next one.
    void Put(char c);

    int Columns() const { return columns_; }
    int Capacity() const { return rows_; }
    /// Rows that were reached so far; shorter than the buffer is wide when the rest is blank.
    const std::deque<std::string>& Rows() const { return text_; }

private:
    void NewLine();

    int columns_;
    int rows_;
    std::size_t column_ = 0;
    std::deque<std::string> text_;
};

}  // namespace KM::Console
