#pragma once

#include "Utils/U_XMLReader/Element.h"

namespace KM::Application {

/// Logs what differs from the defaults in a tree of settings, with the stamps of the sessions (Session.h) that did it:
/// a `Warning` for each value that nobody declared or whose type is none or unknown, and a dump of the others, in which
/// values and defaults are written for people. The tree may be as deep as memory allows.
void AnalyzeSettings(const XML::Element& settings);

}  // namespace KM::Application
