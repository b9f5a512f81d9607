#include "Utils/U_Console/Console.h"

#include <iostream>

#include "Utils/U_Console/ConsoleState.h"
#include "Utils/U_Settings/Settings.h"

namespace KM::Console {

void Init() {
    if (!IsDumpEnabled() || !Settings::ToBool("Console.Init")) return;
    SetBackground(Settings::ToInt("Console.Color.Background"));
    SetForeground(Settings::ToInt("Console.Color.Foreground"));
    SetSizes(Settings::ToInt("Console.Screen.Size.X"), Settings::ToInt("Console.Screen.Size.Y"),
             Settings::ToInt("Console.Buffer.Size.X"), Settings::ToInt("Console.Buffer.Size.Y"));
    Output console{std::cout};
    console.LookBehind();
    Clear(console);
}

}  // namespace KM::Console
