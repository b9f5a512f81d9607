#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "KmTools.h"

int KmStrCpy(char* to, const char* from, int capacity) {
    if (to == nullptr || capacity < 1) return 1;
    const size_t room = static_cast<size_t>(capacity) - 1;
    const size_t length = from != nullptr ? strnlen(from, room) : 0;
    const bool isWhole = from != nullptr && from[length] == '\0';
    if (length != 0) std::memmove(to, from, length);
    to[length] = '\0';
    return isWhole ? 0 : 1;
}

int KmSprintf(char* to, int capacity, const char* format, ...) {
    if (to == nullptr || capacity < 1) return 1;
    to[0] = '\0';
    if (format == nullptr) return 1;
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(to, static_cast<size_t>(capacity), format, arguments);
    va_end(arguments);
    return length >= 0 && length < capacity ? 0 : 1;
}
