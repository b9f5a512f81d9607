// A tool that others watch from outside.
// Usage: km_status_child SCENE FOLDER [WINDOW]     status goes to the cache folder FOLDER, under ID 12

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>

#include "Km.h"

using namespace KM;

namespace {

/// Says on standard output how far it is, for who waits for it.
void Say(const char* text) {
    std::puts(text);
    std::fflush(stdout);
}

/// Works until somebody stops it. Ends by itself after a while, so that a test that fails leaves nothing behind.
int Work() {
    const double start = Time::Get();
    try {
        Progress::Auto task("Work");
        task.SubTask(0.5);
        Progress::Auto step("Step");
        Say("ready");
        while (Time::Get() - start < 30.0) {
            step(0.5);
            Verbose::WriteMessage_1(Verbose::EMessageType::All, "a check point that the level drops");
        }
    } catch (const XUserAbort&) {
        Say("stopped");
        return 1;
    }
    return 0;
}

/// Does not end when it is asked to.
int Insist() {
    const double start = Time::Get();
    Say("ready");
    while (Time::Get() - start < 30.0) {
        try {
            CheckAbort();
        } catch (const XUserAbort&) {
            Say("stopped");
        }
    }
    return 0;
}

int Finish() {
    Progress::Auto task("Work");
    task.SubTask(0.5);
    task.SubTask(1.0);
    return 0;
}

/// Reports once more when the process ends, after `main`.
int Late() {
    static const struct Reporter {
        Progress::Auto task{"Late"};
        ~Reporter() { task.SubTask(1.0); }
    } late;
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const std::map<std::string, std::function<int()>> scenes{
        {"work", Work}, {"insist", Insist}, {"finish", Finish}, {"late", Late}};
    if (argc < 3 || !scenes.contains(argv[1])) return 2;
    Caching::Path(argv[2]);
    if (argc > 3) HostMessages::Window(std::strtoull(argv[3], nullptr, 10));
    ID(12);
    IsEnableInCacheProgressStatus(true);
    IsEnableInCacheLookingForCheckAbort(true);
    Application::CatchInterrupts();
    return scenes.at(argv[1])();
}
