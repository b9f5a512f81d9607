#include "Geometry/GeometryDumps.h"

#include <charconv>
#include <cstdio>
#include <limits>
#include <memory>

namespace KM {
namespace {

using Points = std::vector<TPoint<double>>;
using Loops = std::vector<Points>;
using Groups = std::vector<Loops>;

/// A file that takes text while it is open, and nothing otherwise.
class Dump {
public:
    Dump(const char* path, const char* mode)
        : file_(path != nullptr && mode != nullptr ? std::fopen(path, mode) : nullptr) {}

    explicit operator bool() const { return file_ != nullptr; }

    void Write(const std::string& text) { std::fwrite(text.data(), 1, text.size(), file_.get()); }

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, Closer> file_;
};

/// As "%f" prints it, but with a point in each locale: a decimal comma would be one more separator.
std::string Text(double x) {
    constexpr int decimals = 6;
    char text[std::numeric_limits<double>::max_exponent10 + decimals + 4];
    return std::string(text, std::to_chars(text, std::end(text), x, std::chars_format::fixed, decimals).ptr);
}

std::string Text(const TPoint<double>& p, const char* separator) {
    return Text(p.X) + separator + Text(p.Y) + separator + Text(p.Z);
}

std::string Heading(const char* what, std::size_t index) {
    return std::string(what) + " #" + std::to_string(index + 1) + "\n";
}

void WritePoints(Dump& dump, const Points& points) {
    for (const auto& p : points) dump.Write(Text(p, ", ") + "\n");
}

void WriteLoops(Dump& dump, const Loops& loops) {
    for (std::size_t i = 0; i < loops.size(); ++i) {
        dump.Write(Heading("Loop", i));
        WritePoints(dump, loops[i]);
        dump.Write("\n");
    }
}

/// A macro for the host, from its first line to its last.
class Macro {
public:
    Macro(const char* path, bool newFile, bool config) : config_(config), dump_(path, "w") {
        if (!dump_) return;
        dump_.Write("MACRO main\n\n");
        dump_.Write(config_ ? "[kmConfigDefault,1900]\n" : "\n[kmGuiOff]\n");
        if (newFile)
            dump_.Write(
                "\n\n"
                "[kmSend,\"$CdFileNew\"]\n"
                "[kmFormInitGlbl,UiFileNew,89]\n"
                "[kmSendEvt,\"UiFileNew\",-1,0,0]\n");
    }
    Macro(const Macro&) = delete;
    Macro& operator=(const Macro&) = delete;

    ~Macro() {
        if (!dump_) return;
        dump_.Write("\n");
        dump_.Write(config_ ? "[kmConfigRestore]\n" : "\n[kmGuiOn]\n");
        dump_.Write("\nENDMACRO");
    }

    void Draw(const Points& points) {
        if (!dump_ || points.empty()) return;
        dump_.Write(
            "\n"
            "[kmSend,\"!CdLnPoly\"]\n"
            "[kmInitCmd,CdLnPoly,<15,1><28,0>]\n");
        for (const auto& p : points) {
            const std::string at = Text(p, ",");
            dump_.Write("[kmSendEvtOpt,1,0,1,6,\"" + at + "\"]\n");
            dump_.Write("[kmSendEvtOpt,1,0,-1,6,\"" + at + "\"]\n");
        }
        dump_.Write("[kmSendEvtOpt,-1,0,1,2]\n");
    }

    void Draw(const Loops& loops) {
        for (const Points& loop : loops) Draw(loop);
    }

private:
    bool config_;
    Dump dump_;
};

}  // namespace

const std::string PartsPath() { return "D:/HS/Parts/"; }

void Pts2File(const char* path, const Points& points, const char* mode) {
    if (points.empty()) return;
    if (Dump dump(path, mode); dump) WritePoints(dump, points);
}

void Ptss2File(const char* path, const Loops& loops, const char* mode) {
    if (loops.empty()) return;
    if (Dump dump(path, mode); dump) WriteLoops(dump, loops);
}

void Ptsss2File(const char* path, const Groups& groups, const char* mode) {
    if (groups.empty()) return;
    Dump dump(path, mode);
    if (!dump) return;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        dump.Write(Heading("Loops", i));
        WriteLoops(dump, groups[i]);
        dump.Write("\n");
    }
}

void Pts2Macro(const char* path, const Points& points, bool newFile, bool config) {
    if (points.empty()) return;
    Macro(path, newFile, config).Draw(points);
}

void Pts2Macro(const char* path, const Loops& loops, int index, bool newFile, bool config) {
    if (index < 0 || static_cast<std::size_t>(index) >= loops.size()) return;
    Pts2Macro(path, loops[index], newFile, config);
}

void Ptss2Macro(const char* path, const Loops& loops, bool newFile, bool config) {
    if (loops.empty()) return;
    Macro(path, newFile, config).Draw(loops);
}

void Ptss2Macros(const char* path, const Loops& loops, bool newFile, bool config) {
    if (path == nullptr) return;
    for (std::size_t i = 0; i < loops.size(); ++i)
        Pts2Macro((path + std::to_string(i) + ".mac").c_str(), loops[i], newFile, config);
}

void Ptsss2Macro(const char* path, const Groups& groups, bool newFile, bool config) {
    if (groups.empty()) return;
    Macro macro(path, newFile, config);
    for (const Loops& loops : groups) macro.Draw(loops);
}

}  // namespace KM
