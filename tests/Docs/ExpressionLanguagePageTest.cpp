// What docs/expression-language.md shows, tried on the library: each line of its boxes, its program, its catalogue.

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "Utils/U_Parser/ParsingSession.h"
#include "Utils/U_Parser/Values.h"

namespace KM {
namespace {

struct Box {
    std::string language;
    std::vector<std::string> lines;
};

struct Page {
    std::vector<Box> boxes;
    std::string prose;
};

Page ReadPage() {
    Page page;
    bool isInside = false;
    std::ifstream file(KM_SOURCE_DIR "/docs/expression-language.md");
    for (std::string line; std::getline(file, line);) {
        const bool isFence = line.starts_with("```");
        if (isFence && !isInside) page.boxes.push_back({line.substr(3), {}});
        if (isFence) isInside = !isInside;
        else if (isInside) page.boxes.back().lines.push_back(line);
        else page.prose += line + "\n";
    }
    return page;
}

/// What a line gives, in the form of the page.
std::string Outcome(Parsing::ParsingSession& session, const std::string& line, bool isText) {
    try {
        Parsing::Expression* const tree = session.CreateExpression(line);
        if (isText) return '"' + tree->ToString() + '"';
        return Parsing::DoubleConst(tree->ToDouble()).ToString();
    } catch (const KmException& failure) {
        return std::string("fails: ") + failure.what();
    }
}

TEST(ExpressionLanguagePage, ShowsWhatLinesGive) {
    int count = 0;
    for (const Box& box : ReadPage().boxes) {
        if (!box.language.empty()) continue;
        Parsing::ParsingSession session;
        for (const std::string& line : box.lines) {
            const std::size_t mark = line.rfind(" // ");
            ASSERT_NE(mark, std::string::npos) << line;
            const std::string expected = line.substr(mark + 4);
            EXPECT_EQ(Outcome(session, line, expected.starts_with('"')), expected) << line;
            ++count;
        }
    }
    EXPECT_GT(count, 80);
}

TEST(ExpressionLanguagePage, ShowsAProgramThatRuns) {
    std::FILE* const pipe = popen("'" KM_EXPRESSION_PAGE "' 2>&1", "r");
    std::string output;
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) output += static_cast<char>(c);
    EXPECT_EQ(pclose(pipe), 0);
    std::string shown;
    for (const Box& box : ReadPage().boxes)
        if (box.language == "text")
            for (const std::string& line : box.lines) shown += line + "\n";
    EXPECT_EQ(output, shown);
}

TEST(ExpressionLanguagePage, NamesTheWholeCatalogue) {
    std::string capitals = ReadPage().prose;
    for (char& c : capitals) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    const Parsing::ParsingSession session;
    for (const auto& [name, entry] : session.factory) {
        if (name == "_OPEN_") continue;
        const std::string quoted = name == "||" ? "`\\|\\|`" : '`' + name;
        EXPECT_NE(capitals.find(quoted), std::string::npos) << name;
    }
}

}  // namespace
}  // namespace KM
