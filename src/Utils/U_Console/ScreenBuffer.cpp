#include "Utils/U_Console/ScreenBuffer.h"

#include <algorithm>

namespace KM::Console {
namespace {

// Sizes come from configuration files.
int Sane(int size) { return std::clamp(size, 1, 32767); }

}  // namespace

ScreenBuffer::ScreenBuffer(int columns, int rows) : columns_(Sane(columns)), rows_(Sane(rows)), text_(1) {}

void ScreenBuffer::Resize(int columns, int rows) {
    columns_ = Sane(columns);
    rows_ = Sane(rows);
    while (text_.size() > static_cast<std::size_t>(rows_)) text_.pop_front();
    for (std::string& row : text_)
        if (row.size() > static_cast<std::size_t>(columns_)) row.resize(static_cast<std::size_t>(columns_));
    column_ = std::min(column_, static_cast<std::size_t>(columns_));
}

void ScreenBuffer::Clear() {
    text_.assign(1, std::string());
    column_ = 0;
}

void ScreenBuffer::NewLine() {
    text_.emplace_back();
    if (text_.size() > static_cast<std::size_t>(rows_)) text_.pop_front();
    column_ = 0;
}

void ScreenBuffer::Put(char c) {
    if (c == '\n') return NewLine();
    if (c == '\r') {
        column_ = 0;
        return;
    }
    if (c == '\b') {
        if (column_ > 0) --column_;
        return;
    }
    if (c == '\t') {
        // Ends with the row, which may be too short for a stop.
        do Put(' ');
        while (column_ % 8 != 0 && column_ < static_cast<std::size_t>(columns_));
        return;
    }
    if (static_cast<unsigned char>(c) < 32) return;
    if (column_ >= static_cast<std::size_t>(columns_)) NewLine();
    std::string& row = text_.back();
    if (row.size() < column_) row.resize(column_, ' ');
    if (row.size() == column_)
        row += c;
    else
        row[column_] = c;
    ++column_;
}

}  // namespace KM::Console
