#include "Utils/U_Settings/Vocabulary.h"

namespace KM::Settings {

void DeclareIOKeys() {
    [[maybe_unused]] static const Add keys[] = {
        Declare("Debug.Path", "String", "D:/HS/Output/", "Place where temporary files are stored."),
        Declare("Debug.SecondsToWaitForAFileToUnlock", "Int32", "0",
                "In multiprocess usage this is used to force file open to wait for a file to unlock usually 3..10 "
                "seconds."),
    };
}

}  // namespace KM::Settings
