#include "Utils/U_Settings/Vocabulary.h"

namespace KM::Settings {
namespace {

[[maybe_unused]] const bool isDeclared = [] {
    DeclareAppKeys();
    DeclareCachingKeys();
    DeclareConsoleKeys();
    DeclareDebugKeys();
    DeclareIOKeys();
    DeclareSettingsKeys();
    DeclareXMLKeys();
    return true;
}();

}  // namespace
}  // namespace KM::Settings
