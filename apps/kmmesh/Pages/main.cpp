// kmmesh_pages FOLDER: writes the manual page of the tool and the completions of shells, under the names that they have
// where they are installed.

#include <filesystem>
#include <fstream>
#include <iostream>

#include "Pages.h"

namespace {

using namespace KM::Tool;

bool Write(const std::filesystem::path& file, const std::string& text) {
    std::ofstream stream(file, std::ios::binary);
    stream << text << std::flush;
    if (!stream) std::cerr << "kmmesh_pages: " << file.string() << ": cannot be written\n";
    return bool(stream);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: kmmesh_pages FOLDER\n";
        return 1;
    }
    const std::filesystem::path folder = argv[1];
    const Verbs& verbs = AllVerbs();
    const bool isWritten =
        Write(folder / "kmmesh.1", ManPage(verbs)) && Write(folder / "kmmesh", BashCompletion(verbs)) &&
        Write(folder / "kmmesh.fish", FishCompletion(verbs)) && Write(folder / "_kmmesh", ZshCompletion(verbs));
    return isWritten ? 0 : 1;
}
