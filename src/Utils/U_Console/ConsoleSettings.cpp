#include "Utils/U_Settings/Formatters.h"
#include "Utils/U_Settings/Vocabulary.h"

namespace KM::Settings {

void DeclareConsoleKeys() {
    [[maybe_unused]] static const Add keys[] = {
        Declare("Console", "", "", "Console related settings."),
        Declare(
            "Console.XSLTFormatter", "String", FormatterAddress("/KMHS/Formatters/Dump.xsl"),
            "XSLT Formatter write at begining of a dump. If is void it is not written. No angular bracket required!"),
        Declare("Console.WriteAppNameInConsoleTitle", "Bool", "Y",
                "Write or no the application name in console title."),
        Declare("Console.Init", "Bool", "N", "If is set then resize else not."),
        Declare("Console.DumpFileName", "String", "",
                "If is not void will dump the console to the file. No extension is required because XML extension will "
                "be appended."),
        Declare("Console.ArchiveDumpFile", "Bool", "N", "If is set will makes copy of the dump file appending date."),
        Declare("Console.Screen.Size.X", "Int32", "132", ""),
        Declare("Console.Screen.Size.Y", "Int32", "75", ""),
        Declare("Console.Buffer.Size.X", "Int32", "132", ""),
        Declare("Console.Buffer.Size.Y", "Int32", "1000", ""),
        Declare("Console.ReSize", "Int32", "Yes", ""),
        Declare("Console.Color.Foreground", "Int32", "b0111", "BRGB"),
        Declare("Console.Color.Background", "Int32", "b0001", "BRGB"),
    };
}

}  // namespace KM::Settings
