#pragma once

namespace KM::IO {

/// True while a menu asks for a key: keys are for the menu then, and for nobody else.
bool AreKeysForAMenu();

}  // namespace KM::IO
