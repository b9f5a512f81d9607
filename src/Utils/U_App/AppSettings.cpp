#include "Utils/U_Settings/Vocabulary.h"

namespace KM::Settings {

void DeclareAppKeys() {
    [[maybe_unused]] static const Add keys[] = {
        Declare("Actions", "", "", "This group sets the desired performed action."),
        Declare("Actions.Execute", "String", "", "This group sets the desired performed action."),
        Declare("Actions.Utils.Redirector.ToFile", "String", "", "This redirects XML configuration reading."),
        Declare("Debug.IsAnalyzeSettingsBefore", "String", "N", "Dump setting before calling desired action."),
        Declare("Debug.IsAnalyzeSettingsAfter", "String", "N", "Dump setting after calling desired action."),
        Declare("Descriptors.ReturnCodes", "", "", "Describe the Framework returned code."),
        Declare("Descriptors.ReturnCodes.C0000", "", "", "Run was OK."),
        Declare("Descriptors.ReturnCodes.C0001", "", "", "User Break detected."),
        Declare("Descriptors.ReturnCodes.C0003", "", "", "No configuration file."),
        Declare("Descriptors.ReturnCodes.C0004", "", "", "Invalid configuration file."),
        Declare("Descriptors.ReturnCodes.C0008", "", "",
                "Restart detected. The procesing hasn't end a restart of the application is required. This is "
                "triggered by Behavior.MaxAcceptableMemoryLoading"),
        Declare("Descriptors.ReturnCodes.C0009", "", "", "Unexpected error detected."),
    };
}

}  // namespace KM::Settings
