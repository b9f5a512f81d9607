#include "Utils/U_App/StatusFiles.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Support/TempFolder.h"
#include "Utils/U_App/CheckAbort.h"
#include "Utils/U_Caching/Caching.h"

namespace KM {
namespace {

using Test::TempFolder;

/// A cache folder of its own, for the tool with the number 12.
class StatusFiles : public testing::Test {
protected:
    StatusFiles() {
        Caching::Path(folder / "");
        ID(12);
    }
    ~StatusFiles() override {
        Caching::Path(path_);
        ID(id_);
    }

    static std::string InFolder(const std::string& name) { return Caching::Path() + name; }

    TempFolder folder;

private:
    const std::string path_ = Caching::Path();
    const int id_ = ID();
};

TEST_F(StatusFiles, AreNamedByTheNumberOfTheTool) {
    EXPECT_EQ(AbortFileName(), InFolder("!Break(ID=12)"));
    EXPECT_EQ(FinishedMessage(), "!Finished(ID=12)");
    EXPECT_EQ(FinishedFileName(), InFolder("!Finished(ID=12)"));
    EXPECT_EQ(MessageFileName(0.6, 0.1, "A.B"), InFolder("!Message(ID=12, 0.6, 0.1, A.B)"));
    ID(-3);
    EXPECT_EQ(AbortFileName(), InFolder("!Break(ID=-3)"));
}

TEST_F(StatusFiles, MessagesHoldNothingThatNoNameCan) {
    EXPECT_EQ(MessageFileName(1.0, 0.0, std::string("a/b\\c") + '\0' + "d"),
              InFolder("!Message(ID=12, 1, 0, a_b_c_d)"));
    EXPECT_EQ(MessageFileName(1.0, 0.0, ""), InFolder("!Message(ID=12, 1, 0, )"));
}

TEST_F(StatusFiles, LongMessagesAreCutBetweenCharacters) {
    const std::size_t path = Caching::Path().size();
    EXPECT_EQ(MessageFileName(1.0, 0.0, std::string(500, 'm')).size(), path + 251);
    std::string characters = "m";
    for (int i = 0; i < 200; ++i) characters += "\xe2\x82\xac";
    for (const char* more : {"", "m", "mm"}) {
        const std::string name = MessageFileName(1.0, 0.0, more + characters);
        EXPECT_LE(name.size(), path + 251);
        EXPECT_GT(name.size(), path + 248);
        EXPECT_EQ(name.substr(name.size() - 4), "\xe2\x82\xac)");
    }
}

TEST_F(StatusFiles, DeletesTheMessagesOfThisToolAlone) {
    for (const char* name : {"!Message(ID=12, 1, 0, A)", "!Message(ID=12, 0, 0, B)", "!Message(ID=1, 1, 0, A)",
                             "!Message(ID=123, 1, 0, A)", "!Finished(ID=12)", "other"})
        folder.Write(name, "");
    DeleteMessageFiles();
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"!Finished(ID=12)", "!Message(ID=1, 1, 0, A)",
                                                        "!Message(ID=123, 1, 0, A)", "other"}));
}

}  // namespace
}  // namespace KM
