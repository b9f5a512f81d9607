#include "Utils/U_Debug/Objects.h"

namespace KM {

Object::~Object() = default;

void Object::Dump(std::ostream&) const {}

PureAbstract::~PureAbstract() = default;

Enums::~Enums() = default;

}  // namespace KM
