#include "Utils/U_App/Application.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Utils/U_App/HostMessages.h"

namespace KM::Application {
namespace {

using Words = std::vector<std::string>;

Words Taken(Words words) {
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    Arguments(static_cast<int>(words.size()), argv.data());
    Words taken;
    taken.swap(Arguments());
    return taken;
}

TEST(CommandLine, StandsAsItIs) {
    EXPECT_EQ(Taken({"tool"}), Words{"tool"});
    EXPECT_EQ(Taken({"tool", "a b", "", "c\"d", "e\""}), (Words{"tool", "a b", "", "c\"d", "e\""}));
}

TEST(CommandLine, QuotedRunsAreOne) {
    EXPECT_EQ(Taken({"tool", "\"a", "b", "c\"", "d"}), (Words{"tool", "\"abc\"", "d"}));
    EXPECT_EQ(Taken({"tool", "\"a\"", "b"}), (Words{"tool", "\"a\"", "b"}));
    EXPECT_EQ(Taken({"tool", "\"a b\"", "b"}), (Words{"tool", "\"a b\"", "b"}));
    EXPECT_EQ(Taken({"\"C:/my", "tool\"", "x"}), (Words{"\"C:/mytool\"", "x"}));
    EXPECT_EQ(Taken({"tool", "\"a", "\"b", "c\"", "\"d", "\""}), (Words{"tool", "\"a\"bc\"", "\"d\""}));
    EXPECT_EQ(Taken({"tool", "\"a", "", "b\""}), (Words{"tool", "\"ab\""}));
}

TEST(CommandLine, ALoneQuoteClosesAtOnce) { EXPECT_EQ(Taken({"tool", "\"", "b"}), (Words{"tool", "\"", "b"})); }

TEST(CommandLine, ARunThatIsNeverClosedLosesNothing) {
    EXPECT_EQ(Taken({"tool", "\"a", "b", "c"}), (Words{"tool", "\"abc"}));
    EXPECT_EQ(Taken({"tool", "\"a"}), (Words{"tool", "\"a"}));
}

TEST(CommandLine, ReplacesTheOneBefore) {
    char one[] = "one";
    char two[] = "two";
    char* argv[] = {one, two, nullptr};
    Arguments(2, argv);
    Arguments(1, argv);
    EXPECT_EQ(Arguments(), Words{"one"});
    Arguments().clear();
}

TEST(CommandLine, EndsWhereItEnds) {
    Arguments() = {"before"};
    Arguments(3, nullptr);
    EXPECT_TRUE(Arguments().empty());
    char one[] = "one";
    char* argv[] = {one, nullptr, nullptr};
    Arguments(-1, argv);
    EXPECT_TRUE(Arguments().empty());
    Arguments(0, argv);
    EXPECT_TRUE(Arguments().empty());
    Arguments(3, argv);
    EXPECT_EQ(Arguments(), Words{"one"});
    Arguments().clear();
}

TEST(CommandLine, MayBeLong) {
    Words words(10000, "\"a");
    words.front() = "tool";
    EXPECT_EQ(Taken(words).size(), 2u);
    EXPECT_EQ(Taken(Words(10000, "a.xml")).size(), 10000u);
    EXPECT_EQ(Taken({std::string(1000000, 'x')})[0].size(), 1000000u);
}

TEST(CommandLine, TheFifthOfFiveIsTheWindow) {
    const auto windowOf = [](const Words& words) {
        HostMessages::Window(7);
        Taken(words);
        return HostMessages::Window();
    };
    EXPECT_EQ(windowOf({"tool", "a", "b", "c", "123"}), 123u);
    EXPECT_EQ(windowOf({"tool", "a", "b", "c", " 12x"}), 12u);
    EXPECT_EQ(windowOf({"tool", "a", "b", "c", "x"}), 0u);
    EXPECT_EQ(windowOf({"tool", "a", "b", "c", ""}), 0u);
    EXPECT_EQ(windowOf({"tool", "\"a", "b", "c\"", "9"}), 9u) << "words count, not what quotes make of them";
    EXPECT_EQ(windowOf({"tool", "a", "b", "123"}), 7u);
    EXPECT_EQ(windowOf({"tool", "a", "b", "c", "123", "d"}), 7u);
    HostMessages::Window(0);
}

TEST(Application, HasAFolder) {
    EXPECT_EQ(GetEXEFilePath(), "");
    const std::pair<const char*, const char*> folders[] = {
        {"/usr/bin/tool", "/usr/bin/"}, {"C:\\km\\tool.exe", "C:\\km\\"}, {"tool", ""}, {"./tool", "./"}, {"", ""}};
    for (const auto& [program, folder] : folders) {
        Arguments() = {program, "/other/file"};
        EXPECT_EQ(GetEXEFilePath(), folder);
    }
    Arguments().clear();
}

TEST(Application, KeepsExitCodeAndName) {
    EXPECT_EQ(ExitCode(), 0);
    ExitCode(-7);
    EXPECT_EQ(ExitCode(), -7);
    ExitCode(0);
    Name("ReduceV1");
    EXPECT_EQ(Name(), "ReduceV1");
    Name("");
}

}  // namespace
}  // namespace KM::Application
