#include "Utils/U_XMLReader/Reader.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <string_view>

#include "Utils/U_IO/Files.h"
#include "Utils/U_IO/ToFile.h"
#include "Utils/U_XMLReader/CreateElementProcessor.h"
#include "Utils/U_XMLReader/Parser.h"
#include "Utils/U_XMLReader/Session.h"

namespace KM::XML {
namespace {

struct Buffer {
    std::unique_ptr<char[]> bytes;
    std::size_t size = 0;
};

Buffer BytesOf(const std::string& fileName) {
    // A folder or a pipe has no size, and opening a pipe could wait forever.
    const auto size = static_cast<std::size_t>(std::max<std::int64_t>(0, IO::FileSize(fileName)));
    if (size == 0) return {};
    Buffer buffer{std::make_unique_for_overwrite<char[]>(size), size};
    IO::ToFile file(fileName, "rb", 0, false);
    constexpr std::size_t most = std::numeric_limits<unsigned>::max();
    for (std::size_t done = 0; done < size; done += most)
        KM_IO_READ(buffer.bytes.get() + done, static_cast<unsigned>(std::min(most, size - done)), file);
    return buffer;
}

}  // namespace

void Read(const std::string& fileName, Processor& processor, bool translate) {
    IncrementSettingSession("Reading: \"" + fileName + "\" configuration file;");
    if (!IO::FileExist(fileName)) return;
    const Buffer buffer = BytesOf(fileName);
    Parse({buffer.bytes.get(), buffer.size}, processor, translate);
}

void ReadFromString(const std::string& text, Processor& processor, bool translate) {
    // The text can be a value of the very tree that is read into.
    const std::string buffer = text;
    Parse(buffer, processor, translate);
}

void ReadElement(const std::string& fileName, Element& element, bool merge) {
    CreateElementProcessor processor(element, merge, nullptr, nullptr);
    Read(fileName, processor, true);
}

void ReadElementFromString(const std::string& text, Element& element, bool merge) {
    CreateElementProcessor processor(element, merge, nullptr, nullptr);
    ReadFromString(text, processor, true);
}

}  // namespace KM::XML
