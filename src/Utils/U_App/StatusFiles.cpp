#include "Utils/U_App/StatusFiles.h"

#include <algorithm>

#include "Utils/U_App/CheckAbort.h"
#include "Utils/U_Caching/Caching.h"
#include "Utils/U_Debug/NumberText.h"
#include "Utils/U_IO/Files.h"

namespace KM {
namespace {

// What a file system takes as the last part of a name, less the ".tmp" under which the file is made.
constexpr std::size_t LongestName = 255 - 4;

std::string MessageStart() { return "!Message(ID=" + std::to_string(ID()) + ", "; }

bool IsForeignToNames(char c) { return c == '/' || c == '\\' || c == '\0'; }

/// The first bytes, without half a character of UTF-8 at the end.
void Cut(std::string& text, std::size_t size) {
    if (text.size() <= size) return;
    while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) --size;
    text.resize(size);
}

}  // namespace

std::string AbortFileName() { return Caching::Path() + "!Break(ID=" + std::to_string(ID()) + ")"; }
std::string FinishedMessage() { return "!Finished(ID=" + std::to_string(ID()) + ")"; }
std::string FinishedFileName() { return Caching::Path() + FinishedMessage(); }

std::string MessageFileName(double global, double local, const std::string& message) {
    std::string name = MessageStart() + NumberText(global) + ", " + NumberText(local) + ", " + message;
    Cut(name, LongestName - 1);
    std::replace_if(name.begin(), name.end(), IsForeignToNames, '_');
    return Caching::Path() + name + ")";
}

void DeleteMessageFiles() { IO::FilesDelete(BeginningOfTheMessageFileName() + "*"); }

const std::string& BeginningOfTheMessageFileName() {
    // Never destroyed: the end of the process is told too.
    static std::string& beginning = *new std::string;
    beginning = Caching::Path() + MessageStart();
    return beginning;
}

}  // namespace KM
