#pragma once

#include <string>

#include "KmApi.h"
#include "Utils/U_XMLReader/Element.h"
#include "Utils/U_XMLReader/Processor.h"

/// The reader of configuration text. It is one pass over the bytes: no name spaces, no matching of tags, no document
/// types, no character references; any bytes may come, NUL counts as a blank.
///
///   text    = { blank | piece };
///   piece   = "<![CDATA[" ... "]]>" | "<?" ... "?>" | "<!--" ... "-->" | "<!" ... ">"      declarations count as
///   comments
///           | "</" name ">" | "<" name { name "=" value } [ "/" ] ">" | value;
///   name    = { letter | digit | "_" | "-" };                                           ASCII, so no dot and no colon
///   value   = '"' ... '"' | "'" ... "'" | all up to the next "<";
///
/// A text loses its line ends, and the blanks round it. One in quotes keeps all that, and the quotes too, as double
/// ones. A declaration loses its first four and last three characters, as if it were a comment; so does a comment
/// that the text ends in. With `translate`, "&lt;", "&gt;", "&amp;", "&apos;" and "&quot;" in attributes and texts
/// become what they stand for; any other "&" stays.
///
/// Refusals: "Bad XML File", thrown as a `const char*` with one `Error` in the log that names the line (the first is
/// 0), where an attribute has no "=", or where something other than ">" stands behind "/" or "</name";
/// `std::length_error` for a closed comment, declaration or command that is too short to be cut, as "<!a>" is. A text
/// that just ends, in a tag or anywhere else, is none. What was read up to there has been told and stays.
namespace KM::XML {

/// Reads a file. A new session (Session.h) is opened for it, even if there is no such file; nothing else happens then.
/// @throws IO::XFileIOError  it cannot be read; the log tells why
KM_API void Read(const std::string& fileName, Processor& processor, bool translate);

/// Reads a copy of the text, so that events may change the text itself. The session goes on.
KM_API void ReadFromString(const std::string& text, Processor& processor, bool translate);

/// Reads a file into a tree by a `CreateElementProcessor`, with `translate`; comments outside its root are dropped.
KM_API void ReadElement(const std::string& fileName, Element& element, bool merge);

/// The same from a text.
KM_API void ReadElementFromString(const std::string& text, Element& element, bool merge);

}  // namespace KM::XML
