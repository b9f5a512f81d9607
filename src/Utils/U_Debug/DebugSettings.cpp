#include "Utils/U_Settings/Vocabulary.h"

namespace KM::Settings {

void DeclareDebugKeys() {
    [[maybe_unused]] static const Add keys[] = {
        Declare("Communication", "", "", "This group sets the behaviour of event communication with outside world."),
        Declare("Communication.EnableInCacheLookingForCheckAbort", "Bool", "n",
                "This enables looking after files with name: !Break(ID=id). If the file is found will be deleted and "
                "the executable will stop without warning."),
        Declare("Communication.EnableInConsoleProgressStatus", "Bool", "n",
                "This enables progress status output as a XML element on console. e.g. &lt;CurrentStatus Global=0.22 "
                "Local=0.8 Message=Run.KMHSV0.7.2.Analyzing.Whatever/&gt;"),
        Declare(
            "Communication.EnableInCacheProgressStatus", "Bool", "n",
            "This enables progress status output as a file name. Its sintax is: !Message(ID=id, GlobalUnityProgress, "
            "LocalUnityProgress, CurrentTask). Ex: !Message(ID=12, 0.6, 0.1, Generate.Toolpath.Linking)."),
        Declare("Communication.ID", "Int32", "1",
                "The ID of the executable. It is used by different IO events as Abort and Progress status to "
                "differentiate different executables."),
        Declare("Communication.TimeGranularity", "Real64", "0.2", "How often to update the progress event. [sec]"),
        Declare("Debug", "", "", "This group sets the verbose level."),
        Declare("Debug.VerboseLevel", "Enum", "5", "This set the level of feed back dumped."),
        Declare("Debug.VerboseLevel.None", "EnumValue", "0", "", "Developer"),
        Declare("Debug.VerboseLevel.System", "EnumValue", "1", "", "Developer"),
        Declare("Debug.VerboseLevel.Error", "EnumValue", "2", "", "Developer"),
        Declare("Debug.VerboseLevel.Warning", "EnumValue", "3", "", "Developer"),
        Declare("Debug.VerboseLevel.Info", "EnumValue", "4", "", "Developer"),
        Declare("Debug.VerboseLevel.Note", "EnumValue", "5", "", "Developer"),
        Declare("Debug.VerboseLevel.All", "EnumValue", "6", "", "Developer"),
        Declare(
            "Behavior.MaxAcceptableMemoryLoadingFactor", "Real64", "1.0",
            "If is 1 do nothing. If is less than one will enforce application restarting if the memory becomes "
            "fragmented and is allocated more than acceptable value. Can be used a value of 0.5 with good results."),
    };
}

}  // namespace KM::Settings
