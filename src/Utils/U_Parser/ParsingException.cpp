#include "Utils/U_Parser/ParsingException.h"

namespace KM::Parsing {

ParsingException::ParsingException(const std::string& message, unsigned line, std::size_t position)
    : KmException(message, "src/Utils/U_Parser", line), position_(position) {}

ParsingException::~ParsingException() = default;

}  // namespace KM::Parsing
