#include "Platform/Keys.h"
#include "Utils/U_App/Services.h"
#include "Utils/U_Debug/Exceptions.h"
#include "Utils/U_Debug/Time.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_IO/MenuKeys.h"
#include "Utils/U_IO/Processes.h"

namespace KM::IO {
namespace {

using Verbose::EMessageType;

constexpr int Escape = 27;

int openMenus = 0;

class OpenMenu {
public:
    OpenMenu() { ++openMenus; }
    OpenMenu(const OpenMenu&) = delete;
    OpenMenu& operator=(const OpenMenu&) = delete;
    ~OpenMenu() { --openMenus; }
};

void Ask(const std::vector<std::string>& items) {
    for (std::size_t i = 0; i < items.size(); ++i)
        Verbose::WriteMessage_1(EMessageType::Info, std::to_string(i) + ": " + items[i]);
    Verbose::WriteMessage_1(EMessageType::Info, "Your Choice [0 - " + std::to_string(items.size() - 1) + "] ? ");
}

int WaitForKey() {
    for (;;) {
        const int key = Platform::TakeKey();
        if (key != -1) return key;
        if (!Platform::IsKeyboardThere()) throw Escape;  // nobody will ever press one
        // No message is written here, and so no other point of cancellation is passed.
        if (Application::Services::AbortEvent()()) throw XUserAbort();
        Time::Sleep(500);
    }
}

}  // namespace

bool AreKeysForAMenu() { return openMenus > 0; }

int Choice(const std::vector<std::string>& items) {
    const Verbose::Scope scope("SelectChoice");
    const OpenMenu menu;  // a check point would take the keys that were typed ahead
    if (items.empty()) throw Escape;
    for (;;) {
        Ask(items);
        const int key = WaitForKey();
        if (key == Escape) {
            Verbose::WriteMessage_1(EMessageType::Info, "Esc Pressed execution aborted.");
            throw Escape;
        }
        const int index = key - '0';
        if (index >= 0 && index <= 9 && index < static_cast<int>(items.size())) {
            Verbose::WriteMessage_1(EMessageType::Note, "The choice: " + std::to_string(index) + ": " +
                                                            items[static_cast<std::size_t>(index)] + " was selected.");
            return index;
        }
        Verbose::WriteMessage_1(EMessageType::Info, std::string("The choice: ") + static_cast<char>(key) +
                                                        " isn't a valid one. Please try again.");
    }
}

}  // namespace KM::IO
