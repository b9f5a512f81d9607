#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "Support/TempFolder.h"
#include "Utils/U_App/HostMessages.h"

namespace {

/// The example as a process of its own, whose output we read.
class Receiver {
public:
    explicit Receiver(const std::string& arguments)
        : output_(popen(("exec '" KM_RECEIVER_EXAMPLE "' " + arguments + " 2>&1").c_str(), "re")) {}
    Receiver(const Receiver&) = delete;
    Receiver& operator=(const Receiver&) = delete;
    ~Receiver() {
        if (output_ != nullptr) pclose(output_);
    }

    std::string Line() {
        char line[1000];
        return std::fgets(line, sizeof line, output_) != nullptr ? line : "";
    }
    std::string Rest() {
        std::string text;
        for (std::string line = Line(); !line.empty(); line = Line()) text += line;
        return text;
    }
    int End() {
        const int status = pclose(output_);
        output_ = nullptr;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    std::FILE* output_;
};

/// A number that no other test uses at this time.
std::string OwnWindow() { return std::to_string(getpid()); }

TEST(ReceiverExample, PrintsWhatARunningToolReports) {
    const KM::Test::TempFolder cache;
    Receiver receiver(OwnWindow());
    ASSERT_EQ(receiver.Line(), "waiting at window " + OwnWindow() + "\n");
    const std::string tool = "'" KM_STATUS_CHILD "' finish '" + (cache / "") + "' " + OwnWindow();
    EXPECT_EQ(std::system(tool.c_str()), 0);
    const std::string process = std::to_string(std::atoi(receiver.Line().c_str()));
    EXPECT_NE(process, "0");
    EXPECT_EQ(receiver.Rest(), process + ":   0 % (0 %) Work\n" + process + ": !Finished(ID=12)\n");
    EXPECT_EQ(receiver.End(), 0);
}

TEST(ReceiverExample, TakesNobodysWindow) {
    Receiver first(OwnWindow());
    ASSERT_EQ(first.Line(), "waiting at window " + OwnWindow() + "\n");
    Receiver second(OwnWindow());
    EXPECT_EQ(second.Rest(), "receiver: window " + OwnWindow() + " is taken, or cannot be made\n");
    EXPECT_EQ(second.End(), 1);
    KM::HostMessages::Window(std::stoull(OwnWindow()));
    KM::HostMessages::SendProgress("still here", 0.5, 0.25);
    KM::HostMessages::SendFinished("bye");
    KM::HostMessages::Window(0);
    EXPECT_EQ(first.Rest(), OwnWindow() + ":  25 % (50 %) still here\n" + OwnWindow() + ": bye\n");
}

TEST(ReceiverExample, ShowsItsUsageForWordsThatDoNotFit) {
    for (const char* words : {"", "0", "x", "7x", "1 2"}) {
        SCOPED_TRACE(words);
        Receiver receiver(words);
        EXPECT_EQ(receiver.Rest(), "usage: receiver WINDOW\nWINDOW is a number above 0\n");
        EXPECT_EQ(receiver.End(), 2);
    }
}

}  // namespace
