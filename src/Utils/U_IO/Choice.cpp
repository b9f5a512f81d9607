#include "Platform/Keys.h"
#include "Utils/U_Debug/Time.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_IO/Processes.h"

namespace KM::IO {
namespace {

using Verbose::EMessageType;

constexpr int Escape = 27;

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
        Time::Sleep(500);
    }
}

}  // namespace

int Choice(const std::vector<std::string>& items) {
    const Verbose::Scope scope("SelectChoice");
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
