#pragma once

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace KM::Test {

/// One binary record: a normal that no reader should look at, the nine numbers, two bytes likewise.
inline std::string StlRecord(const std::vector<float>& nine) {
    std::string record(12, '\xAA');
    record.append(reinterpret_cast<const char*>(nine.data()), 36);
    return record + "\xBB\xCC";
}

/// A binary file with a header text of any length, filled up with zeros, and the count that it claims.
inline std::string StlBinary(const std::string& header, std::uint32_t count, const std::vector<std::string>& records) {
    std::string bytes = header;
    bytes.resize(80, '\0');
    bytes.append(reinterpret_cast<const char*>(&count), 4);
    for (const std::string& record : records) bytes += record;
    return bytes;
}

/// A text file as careful programs write it.
inline std::string StlText(int triangles, const std::string& lineEnd = "\n") {
    std::string text = "solid part" + lineEnd;
    for (int i = 0; i < triangles; ++i) {
        text += "  facet normal 0.0 0.0 1.0" + lineEnd + "    outer loop" + lineEnd;
        for (int k = 0; k < 3; ++k)
            text += "      vertex " + std::to_string(i + 0.25 * k) + " -1.5e-3 " + std::to_string(k) + lineEnd;
        text += "    endloop" + lineEnd + "  endfacet" + lineEnd;
    }
    return text + "endsolid part" + lineEnd;
}

/// Words that a text file may hold by mistake or by malice.
inline const std::vector<std::string>& OddWords() {
    static const std::vector<std::string> words = {"vertex",
                                                   "VERTEX",
                                                   "vErTeX",
                                                   "vertexx",
                                                   "verte",
                                                   "xvertex",
                                                   "facet",
                                                   "normal",
                                                   "outer",
                                                   "loop",
                                                   "endloop",
                                                   "endfacet",
                                                   "0",
                                                   "-0",
                                                   "00",
                                                   "1",
                                                   "-1",
                                                   "+1",
                                                   "+-1",
                                                   "--1",
                                                   "+",
                                                   "-",
                                                   ".",
                                                   "-.",
                                                   ".5",
                                                   "5.",
                                                   "1.5.5",
                                                   "1..5",
                                                   "1,5",
                                                   "1e",
                                                   "1e+",
                                                   "1e-",
                                                   "1e5",
                                                   "1E+05",
                                                   "1e-5",
                                                   "1e5e5",
                                                   "1e5.5",
                                                   "1e+-5",
                                                   "e5",
                                                   ".e5",
                                                   "1.e5",
                                                   "1e400",
                                                   "-1e400",
                                                   "1e-400",
                                                   "-1e-400",
                                                   "4.9e-324",
                                                   "2.4e-324",
                                                   "1.7976931348623159e308",
                                                   "2.2250738585072011e-308",
                                                   "9007199254740993",
                                                   "1e99999999999999999999",
                                                   "0e99999999999999999999",
                                                   "1e-99999999999999999999",
                                                   "0x",
                                                   "0X",
                                                   "0x1",
                                                   "0x1p3",
                                                   "0X1.8P-3",
                                                   "0x.8",
                                                   "0x.",
                                                   "0xg",
                                                   "0xp1",
                                                   "0x1p",
                                                   "0x1p+",
                                                   "0x1e5",
                                                   "0x1.8.8",
                                                   "00x5",
                                                   "-0x1p-1074",
                                                   "0x1p5000",
                                                   "nan",
                                                   "-nan",
                                                   "NaN",
                                                   "nan(12)",
                                                   "nanx",
                                                   "na",
                                                   "n",
                                                   "nax",
                                                   "inf",
                                                   "-inf",
                                                   "Inf",
                                                   "infinity",
                                                   "INFINITY",
                                                   "infinit",
                                                   "infx",
                                                   "infix",
                                                   "in",
                                                   "i",
                                                   "inside",
                                                   "ivertex",
                                                   "1f",
                                                   "1vertex",
                                                   "0.1d0",
                                                   "1_000",
                                                   "123456789012345678901234567890",
                                                   "0.1000000000000000055511151231257827021181583404541015625",
                                                   "(1)",
                                                   "\"1\"",
                                                   "#",
                                                   "1;2"};
    return words;
}

template <class Random>
std::string LongWord(Random& random) {
    static const char bytes[] = {'1', '0', '9', 'x', '.'};
    const char byte = bytes[random() % 5];
    std::string word(990 + random() % 20, byte);
    if (random() % 3 == 0) word += "vertex";
    if (random() % 3 == 0) word += std::string(random() % 2100, byte);
    return word;
}

/// A text of odd words, most of them where numbers should stand, parted by odd white space.
template <class Random>
std::string HostileText(Random& random, int words) {
    static const std::vector<std::string> gaps = {
        " ", " ", " ", "\n", "\r\n", "\t", "\v\f", "  \n ", std::string(1, '\0'), ""};
    const std::vector<std::string>& odd = OddWords();
    std::string text = random() % 8 == 0 ? "" : "solid\n";
    for (int i = 0; i < words; ++i) {
        const auto kind = random() % 64;
        if (kind < 16)
            text += "vertex";
        else if (kind < 40)
            text += std::to_string(static_cast<int>(random() % 2001) - 1000) + "." + std::to_string(random() % 1000);
        else if (kind == 40)
            text += LongWord(random);
        else if (kind == 41)
            text += static_cast<char>(random() % 256);
        else
            text += odd[random() % odd.size()];
        text += gaps[random() % (random() % 4 == 0 ? gaps.size() : 6)];
    }
    return text;
}

/// The bytes with some of them replaced, taken out, or repeated, and perhaps an early end.
template <class Random>
std::string Mutated(std::string bytes, Random& random) {
    for (auto edits = 1 + random() % 6; edits > 0 && !bytes.empty(); --edits) {
        const std::size_t at = random() % bytes.size();
        switch (random() % 5) {
            case 0:
                bytes[at] = static_cast<char>(random() % 128);
                break;
            case 1:
                bytes[at] = " \n\t\r\0.-+eEx0"[random() % 12];
                break;
            case 2:
                bytes.erase(at, 1 + random() % 20);
                break;
            case 3:
                bytes.insert(at, bytes.substr(random() % bytes.size(), random() % 30));
                break;
            default:
                bytes[at] = static_cast<char>(random() % 256);
                break;
        }
    }
    if (random() % 4 == 0) bytes.resize(random() % (bytes.size() + 1));
    return bytes;
}

}  // namespace KM::Test
