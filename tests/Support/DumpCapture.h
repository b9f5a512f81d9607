#pragma once

#include <cstddef>
#include <sstream>
#include <string>

#include "Utils/U_App/Services.h"

namespace KM::Test {

/// Catches what goes to the dump stream while it lives.
class DumpCapture {
public:
    DumpCapture() { Application::Services::DumpStream(text_); }
    ~DumpCapture() { Application::Services::DumpStream(before_); }
    DumpCapture(const DumpCapture&) = delete;
    DumpCapture& operator=(const DumpCapture&) = delete;

    std::string Text() const { return text_.str(); }
    int Count(const std::string& what) const {
        int count = 0;
        const std::string text = Text();
        for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + what.size())) ++count;
        return count;
    }

private:
    std::ostream& before_ = Application::Services::DumpStream();
    std::ostringstream text_;
};

}  // namespace KM::Test
