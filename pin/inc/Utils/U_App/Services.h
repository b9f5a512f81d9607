#pragma once

#include <ostream>
#include <streambuf>

#include "KmApi.h"

namespace KM {

/// A stream buffer that swallows all that it is given.
class VoidStreamBuf : public std::streambuf {
protected:
    int_type overflow(int_type c) override { return traits_type::not_eof(c); }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

namespace Application {

/// What a program can replace in the framework.
class KM_API Services {
public:
    /// Where trace lines go, for the whole process. At start a stream that swallows them.
    static std::ostream& DumpStream();
    /// Sets the stream; it must outlive its use.
    static void DumpStream(std::ostream& stream);
};

}  // namespace Application
}  // namespace KM
