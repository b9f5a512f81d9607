#include "Utils/U_XMLReader/Entities.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace KM::XML {
namespace {

struct Entity {
    char character;
    std::string_view text;
};

constexpr Entity Entities[] = {{'<', "&lt;"}, {'>', "&gt;"}, {'&', "&amp;"}, {'\'', "&apos;"}, {'"', "&quot;"}};
constexpr char Characters[] = "<>&'\"";

const Entity* EntityAt(std::string_view text) {
    for (const Entity& entity : Entities)
        if (text.starts_with(entity.text)) return &entity;
    return nullptr;
}

std::string_view EntityOf(char c) {
    for (const Entity& entity : Entities)
        if (entity.character == c) return entity.text;
    return {};
}

}  // namespace

void DecodeEntities(std::string& text) {
    std::size_t to = text.find('&');
    for (std::size_t from = to; from < text.size();) {
        const Entity* const entity = EntityAt(std::string_view(text).substr(from));
        text[to++] = entity != nullptr ? entity->character : '&';
        from += entity != nullptr ? entity->text.size() : 1;
        const std::size_t next = std::min(text.find('&', from), text.size());
        std::copy(text.data() + from, text.data() + next, text.data() + to);
        to += next - from;
        from = next;
    }
    text.resize(std::min(to, text.size()));
}

std::string WithEntities(const std::string& text) {
    std::string result;
    std::size_t done = 0;
    for (std::size_t at; (at = text.find_first_of(Characters, done)) != std::string::npos; done = at + 1) {
        result.append(text, done, at - done);
        result += EntityOf(text[at]);
    }
    return result.append(text, done);
}

}  // namespace KM::XML
