#pragma once

#include <cstddef>
#include <string>

#include "KmApi.h"
#include "Utils/U_Debug/Exceptions.h"

/// The table of a tool's named actions. Static subscribers fill it while the tool is loaded; a configuration then names
/// the action to run. The library has no action of its own.
namespace KM::Factory {

/// Enters an action into the table while it is constructed, and declares it to the settings: "Actions." and the key,
/// and the same with ".Version" behind.
///
///     static void Reduce();
///     static const KM::Factory::FactorySubscriber reduce("KM.Reduce", "V1.0", Reduce, "", "Fewer triangles.", __FILE__,
///                                                        std::to_string(__LINE__));
class KM_API FactorySubscriber {
public:
    /// The key has an action already.
    class XTypeAlreadyRegistered {};

    /// @param key         dotted name; the part behind the last dot is the short name
    /// @param version     becomes part of the application's name
    /// @param action      what to run. A null one is refused, with an `Error` in the log
    /// @param type, help  of the setting, see `Settings::Add`
    /// @param file, line  place of the declaration
    ///
    /// @throws XTypeAlreadyRegistered  with an `Error` in the log. Out of a static object this ends the process, as it
    ///                                 should: two parts of the tool want the same name. Any other failure only loses
    ///                                 the action.
    FactorySubscriber(const std::string& key, const std::string& version, void (*action)(), const std::string& type,
                      const std::string& help, const std::string& file, const std::string& line);
    /// The same for the address of such a function.
    FactorySubscriber(const std::string& key, const std::string& version, void* action, const std::string& type,
                      const std::string& help, const std::string& file, const std::string& line);
    /// A plain `nullptr`, which would fit both: refused in the same way.
    FactorySubscriber(const std::string& key, const std::string& version, std::nullptr_t, const std::string& type,
                      const std::string& help, const std::string& file, const std::string& line);
};

/// Whether the table has an action under exactly this key.
KM_API bool Exists(const std::string& key);

/// Runs an action, as a task of the progress, in a session of its own (Session.h). `Application::Name` becomes the
/// short name of the key with the version behind it, and the console's title too if "Console.WriteAppNameInConsoleTitle"
/// is on, ahead of the action and again behind it. Exceptions of the action pass through; what is derived from `XNone`
/// comes out as a plain `XNone`.
///
/// A key that is not in the table leaves an `Error` in the log, and nothing else happens.
KM_API void Run(const std::string& key);

/// Logs each action with its version, one `Info` each, in the order of the keys' bytes.
KM_API void DumpRegisteredActions();

}  // namespace KM::Factory
