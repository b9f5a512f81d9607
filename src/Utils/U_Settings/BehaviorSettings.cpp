#include "Utils/U_Settings/Vocabulary.h"

namespace KM::Settings {

void DeclareSettingsKeys() {
    [[maybe_unused]] static const Add keys[] = {
        Declare("Behavior.IsParallel", "Bool", "y", ""),
    };
}

}  // namespace KM::Settings
