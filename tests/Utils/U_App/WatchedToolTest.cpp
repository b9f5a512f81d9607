// A running tool, as those see it who watch it from another process.

#include <gtest/gtest.h>
#include <pty.h>
#include <sys/inotify.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <functional>
#include <string>
#include <vector>

#include "Support/TempFolder.h"

namespace KM {
namespace {

using Test::TempFolder;
using Texts = std::vector<std::string>;
using std::chrono::steady_clock;

/// A tool on a terminal of ours.
class Tool {
public:
    explicit Tool(
        const std::string& scene, const std::string& folder, const std::function<void()>& prepare = [] {}) {
        id_ = forkpty(&terminal_, nullptr, nullptr, nullptr);
        if (id_ == 0) {
            prepare();
            execl(KM_STATUS_CHILD, KM_STATUS_CHILD, scene.c_str(), folder.c_str(), nullptr);
            _exit(127);
        }
    }
    Tool(const Tool&) = delete;
    Tool& operator=(const Tool&) = delete;
    ~Tool() {
        if (id_ > 0) {
            kill(id_, SIGKILL);
            waitpid(id_, nullptr, 0);
        }
        close(terminal_);
    }

    /// Reads what it says until it says this. False if it ends before.
    bool WaitFor(const std::string& text) {
        char part[256];
        while (output_.find(text) == std::string::npos) {
            const ssize_t size = read(terminal_, part, sizeof part);
            if (size <= 0) return false;
            output_.append(part, static_cast<std::size_t>(size));
        }
        return true;
    }
    const std::string& Output() const { return output_; }
    void Press(char key) const { EXPECT_EQ(write(terminal_, &key, 1), 1); }
    void Send(int signal) const { kill(id_, signal); }
    termios Settings() const {
        termios settings{};
        tcgetattr(terminal_, &settings);
        return settings;
    }
    /// "exit 1" or "signal 2".
    std::string End() {
        WaitFor("nothing more will come");
        int status = 0;
        waitpid(id_, &status, 0);
        id_ = -1;
        return WIFEXITED(status) ? "exit " + std::to_string(WEXITSTATUS(status))
                                 : "signal " + std::to_string(WTERMSIG(status));
    }

private:
    int terminal_ = -1;
    pid_t id_ = -1;
    std::string output_;
};

void ExpectSame(const termios& a, const termios& b) {
    EXPECT_EQ(a.c_lflag, b.c_lflag);
    EXPECT_EQ(a.c_iflag, b.c_iflag);
    EXPECT_EQ(a.c_cc[VMIN], b.c_cc[VMIN]);
    EXPECT_EQ(a.c_cc[VTIME], b.c_cc[VTIME]);
}

/// Tells the names that appear in a folder, in order.
class Watcher {
public:
    explicit Watcher(const std::string& folder) : events_(inotify_init1(IN_CLOEXEC)) {
        inotify_add_watch(events_, folder.c_str(), IN_CREATE | IN_MOVED_TO | IN_DELETE);
    }
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;
    ~Watcher() { close(events_); }

    /// Waits for the event, as "+name" or "-name". All others until then are kept.
    void WaitFor(const std::string& event) {
        while (seen_.empty() || seen_.back() != event) {
            while (next_ == waiting_.size())
                if (!Read()) return;
            seen_.push_back(waiting_[next_++]);
        }
    }
    const Texts& Seen() const { return seen_; }

private:
    bool Read() {
        alignas(inotify_event) char bytes[4096];
        const ssize_t size = read(events_, bytes, sizeof bytes);
        for (ssize_t at = 0; at < size;) {
            const auto* event = reinterpret_cast<const inotify_event*>(bytes + at);
            const std::string name = event->name;
            const bool isInTheMaking = name.size() > 4 && name.substr(name.size() - 4) == ".tmp";
            if (!isInTheMaking) waiting_.push_back(((event->mask & IN_DELETE) != 0 ? "-" : "+") + name);
            at += static_cast<ssize_t>(sizeof *event + event->len);
        }
        return size > 0;
    }

    int events_;
    std::size_t next_ = 0;
    Texts waiting_;
    Texts seen_;
};

const std::string FirstMessage = "!Message(ID=12, 0, 0, Work)";
const std::string StepMessage = "!Message(ID=12, 0.25, 0.5, Work.Step)";

TEST(WatchedTool, TellsItsProgressAndStopsOnAFile) {
    const TempFolder folder;
    folder.Write("!Finished(ID=12)", "");
    Watcher watcher(folder / "");
    Tool tool("work", folder / "");
    watcher.WaitFor("+" + StepMessage);
    folder.Write("!Break(ID=12)", "");
    watcher.WaitFor("+!Finished(ID=12)");
    EXPECT_EQ(tool.End(), "exit 1");
    Texts seen = watcher.Seen();
    // Each second the message is replaced by the same one, also in the time between our two looks.
    for (std::size_t i = seen.size(); i-- > 2;)
        if (seen[i] == "+" + StepMessage && seen[i - 1] == "-" + StepMessage)
            seen.erase(seen.begin() + static_cast<std::ptrdiff_t>(i) - 1,
                       seen.begin() + static_cast<std::ptrdiff_t>(i) + 1);
    EXPECT_EQ(seen, (Texts{"-!Finished(ID=12)", "+" + FirstMessage, "-" + FirstMessage, "+" + StepMessage,
                           "+!Break(ID=12)", "-!Break(ID=12)", "-" + StepMessage, "+!Finished(ID=12)"}));
    EXPECT_EQ(folder.Names(), Texts{"!Finished(ID=12)"});
}

TEST(WatchedTool, TellsItsEnd) {
    const TempFolder folder;
    for (const char* scene : {"finish", "late"}) {
        SCOPED_TRACE(scene);
        Tool tool(scene, folder / "");
        EXPECT_EQ(tool.End(), "exit 0") << tool.Output();
        EXPECT_TRUE(folder.Has("!Finished(ID=12)"));
    }
}

/// Lets a working tool be stopped in some way, and looks at its end.
void ExpectStopped(const std::function<void(Tool&)>& stop) {
    const TempFolder folder;
    Tool tool("work", folder / "");
    const termios before = tool.Settings();
    ASSERT_TRUE(tool.WaitFor("ready"));
    const auto start = steady_clock::now();
    stop(tool);
    EXPECT_TRUE(tool.WaitFor("stopped"));
    // The limit is far above the 0.2 seconds of the contract: the machine may have other work.
    EXPECT_LT(steady_clock::now() - start, std::chrono::seconds(3));
    EXPECT_EQ(tool.End(), "exit 1");
    ExpectSame(tool.Settings(), before);
    EXPECT_EQ(folder.Names(), Texts{"!Finished(ID=12)"});
}

TEST(WatchedTool, StopsOnEscape) {
    ExpectStopped([](Tool& tool) { tool.Press('\x1b'); });
}

TEST(WatchedTool, StopsOnEscapeBehindOtherKeys) {
    ExpectStopped([](Tool& tool) {
        for (const char key : {'a', '\n', '4', '\x1b'}) tool.Press(key);
    });
}

TEST(WatchedTool, StopsOnCtrlC) {
    ExpectStopped([](Tool& tool) { tool.Press('\x03'); });
}

TEST(WatchedTool, StopsOnARequestToEnd) {
    ExpectStopped([](Tool& tool) { tool.Send(SIGTERM); });
}

TEST(WatchedTool, SecondInterruptEndsItAtOnceWithTheTerminalInOrder) {
    const TempFolder folder;
    for (int run = 0; run < 5; ++run) {  // the signal comes at any moment of its look at the keyboard
        Tool tool("insist", folder / "");
        const termios before = tool.Settings();
        ASSERT_TRUE(tool.WaitFor("ready"));
        tool.Press('\x03');
        ASSERT_TRUE(tool.WaitFor("stopped"));
        tool.Send(SIGINT);
        EXPECT_EQ(tool.End(), "signal 2");
        EXPECT_NE(tool.Output().find("\x1b[0m"), std::string::npos);
        ExpectSame(tool.Settings(), before);
    }
}

TEST(WatchedTool, SecondRequestOfAnyKindEndsIt) {
    const TempFolder folder;
    Tool tool("insist", folder / "", [] { setenv("NO_COLOR", "1", 1); });
    ASSERT_TRUE(tool.WaitFor("ready"));
    tool.Press('\x03');
    ASSERT_TRUE(tool.WaitFor("stopped"));
    tool.Send(SIGTERM);
    EXPECT_EQ(tool.End(), "signal 15");
    EXPECT_EQ(tool.Output().find('\x1b'), std::string::npos);
}

TEST(WatchedTool, InterruptThatTheParentHasSwitchedOffStaysOff) {
    const TempFolder folder;
    Tool tool("work", folder / "", [] { std::signal(SIGINT, SIG_IGN); });
    ASSERT_TRUE(tool.WaitFor("ready"));
    tool.Send(SIGINT);
    tool.Send(SIGINT);
    tool.Press('\x1b');
    EXPECT_EQ(tool.End(), "exit 1");
}

}  // namespace
}  // namespace KM
