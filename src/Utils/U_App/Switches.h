#pragma once

namespace KM::Application {

/// If argument 1 is "/T" or "/t": exports what can be tweaked to "KMHSTweak.XML" in the current folder. The settings
/// are dumped without values from then on. The run goes on all the same.
/// @throws IO::XFileIOError  the file cannot be written
void ExportTweaksIfAsked();

/// Of three arguments, the second being "/" and a letter: does what the letter says, if it says anything, and returns
/// true, which ends the run.
/// @throws IO::XFileIOError  the file cannot be written
bool ActOnSwitch();

}  // namespace KM::Application
