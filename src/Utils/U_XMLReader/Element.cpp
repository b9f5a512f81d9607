#include "Utils/U_XMLReader/Element.h"

#include <bit>
#include <tuple>
#include <typeinfo>
#include <utility>
#include <vector>

#include "Utils/U_XMLReader/Conversions.h"
#include "Utils/U_XMLReader/Limits.h"
#include "Utils/U_XMLReader/NameIndex.h"
#include "Utils/U_XMLReader/Path.h"
#include "Utils/U_XMLReader/UnlinkedNodes.h"

namespace KM::XML {
namespace {

// The common case without the walk that a cast makes.
bool IsPlainElement(const Base& node) { return typeid(node) == typeid(Element); }

Element* AsElement(Base* node) {
    return IsPlainElement(*node) ? static_cast<Element*>(node) : dynamic_cast<Element*>(node);
}

}  // namespace

// What an element with children has besides.
struct Element::Family {
    ChildList children;
    NameIndex index;
};

// Children on their way out. A tree can be deeper than the stack, so each element hands its own children over before it
// goes, and no destructor ever meets a grandchild. Nothing is allocated meanwhile.
class Element::DoomedChildren {
public:
    explicit DoomedChildren(Element& parent) { Adopt(parent); }
    DoomedChildren(const DoomedChildren&) = delete;
    DoomedChildren& operator=(const DoomedChildren&) = delete;

    ~DoomedChildren() {
        while (!doomed_.empty()) {
            const std::unique_ptr<Base> node(doomed_.front());
            doomed_.pop_front();
            if (Element* element = AsElement(node.get())) Adopt(*element);
        }
    }

private:
    void Adopt(Element& parent) {
        if (parent.family_) doomed_.splice(doomed_.begin(), parent.family_->children);
    }

    ChildList doomed_;
};

Element::Element(const std::string& name, const std::string& value, Element* parent) : Base(name, value, parent) {}

Element::Element(const Element& source) : Base({}, {}, nullptr) {
    *this = source;
    hasOtherKey_ = false;
}

Element::~Element() {
    const Element* keeper = isUnlinked_ ? UnlinkedNodes::KeeperOf(*this) : nullptr;
    if (keeper != nullptr && keeper->family_) keeper->LeaveIndex(*this);
    if (hasUnlinked_) UnlinkedNodes::Orphan(*this);
    const DoomedChildren doomed(*this);
}

// The search under the own name keeps it cheap to delete many erased children; one that may have other keys is sought
// in the whole index.
void Element::LeaveIndex(const Element& node) const {
    NameIndex& index = family_->index;
    if (node.hasOtherKey_)
        index.EraseElement(&node);
    else if (index.Find(node.name_) == &node)
        index.Erase(node.name_);
}

Element* Element::Clone() const { return new Element(*this); }

const Element& Element::operator=(const Element& r) {
    if (this != &r) CopyAttributes(r);
    hasOtherKey_ = true;
    name_ = r.name_;
    session_ = r.session_;
    if (!r.value_.empty()) value_ = r.value_;
    if (r.parent_ == nullptr) parent_ = nullptr;

    // The former children die last: `r` can be one of them, or stand below one.
    const DoomedChildren former(*this);
    if (family_) family_->index = {};
    for (const Base* child : r.Children()) AddCloned(CloneTree(*child));
    return *this;
}

void Element::CopyAttributes(const Element& source) {
    if (source.attributes_)
        Attributes() = *source.attributes_;
    else if (attributes_)
        attributes_->clear();
}

std::unique_ptr<Element> Element::CloneWithoutChildren(const Element& source) {
    auto clone = std::make_unique<Element>(source.name_, source.value_);
    clone->CopyAttributes(source);
    clone->session_ = source.session_;
    return clone;
}

// Children of a user's own class are asked for their clone; plain elements go round the call stack.
std::unique_ptr<Base> Element::CloneTree(const Base& source) {
    if (!IsPlainElement(source)) return std::unique_ptr<Base>(source.Clone());

    const Element& root = static_cast<const Element&>(source);
    std::unique_ptr<Element> clone = CloneWithoutChildren(root);
    std::vector<std::pair<const Element*, Element*>> open{{&root, clone.get()}};
    while (!open.empty()) {
        const auto [from, to] = open.back();
        open.pop_back();
        for (const Base* child : from->Children()) {
            if (!IsPlainElement(*child)) {
                to->AddCloned(std::unique_ptr<Base>(child->Clone()));
                continue;
            }
            const Element& element = static_cast<const Element&>(*child);
            std::unique_ptr<Element> part = CloneWithoutChildren(element);
            open.emplace_back(&element, part.get());
            to->AddCloned(std::move(part));
        }
    }
    return clone;
}

void Element::AddChild(std::unique_ptr<Base> child) {
    ChildList& children = Children();
    CheckListRoom(children.size());
    children.push_back(child.get());
    child.release();
}

Element& Element::AddIndexed(std::unique_ptr<Element> child) {
    Element& added = *child;
    added.parent_ = this;
    AddChild(std::move(child));
    family_->index.Set(added.name_, &added);
    return added;
}

void Element::AddCloned(std::unique_ptr<Base> clone) {
    Element* element = AsElement(clone.get());
    AddChild(std::move(clone));
    if (element == nullptr) return;
    element->parent_ = this;
    // Under the own name, not the child's: hosts rely on it that a copy makes its keys anew beside the copied ones.
    element->hasOtherKey_ = true;
    family_->index.Set(name_, element);
}

const Element& Element::operator+=(const Element& child) { return AddIndexed(std::make_unique<Element>(child)); }

const Element& Element::operator+=(const Attribute& attribute) {
    AttributeMap& attributes = Attributes();
    const auto place = attributes.lower_bound(attribute.N());
    if (place != attributes.end() && place->first == attribute.N()) {
        place->second = attribute;
        return *this;
    }
    CheckMapRoom(attributes.size());
    attributes.emplace_hint(place, attribute.N(), attribute);
    return *this;
}

const Element& Element::operator+=(const CDATA& cdata) {
    AddChild(std::make_unique<CDATA>(cdata));
    return *this;
}

const Element& Element::operator+=(const Comment& comment) {
    AddChild(std::make_unique<Comment>(comment));
    return *this;
}

Element& Element::NewChild(const std::string& name, const std::string& value) {
    return AddIndexed(std::make_unique<Element>(name, value));
}

void Element::SetAttribute(const std::string& name, const std::string& value) {
    AttributeMap& attributes = Attributes();
    const auto place = attributes.lower_bound(name);
    if (place != attributes.end() && place->first == name) {
        place->second = Attribute(name, value);
        return;
    }
    CheckMapRoom(attributes.size());
    attributes.emplace_hint(place, std::piecewise_construct, std::forward_as_tuple(name),
                             std::forward_as_tuple(name, value));
}

Element* Element::FindChild(std::string_view name) const { return family_ ? family_->index.Find(name) : nullptr; }

Element& Element::operator[](const std::string& path) {
    Element* element = this;
    PathParts parts(path);
    for (std::string_view part; parts.Next(part);) {
        Element* child = element->FindChild(part);
        element = child != nullptr ? child : &element->NewChild(std::string(part));
    }
    return *element;
}

// Readers of settings hold const trees and expect each key to be there for them.
Element& Element::operator[](const std::string& path) const { return const_cast<Element&>(*this)[path]; }

bool Element::IsChild(const Element* element) const {
    for (const Base* child : Children())
        if (child == element) return true;
    return false;
}

void Element::N(const std::string& name) {
    if (parent_ == nullptr) return Base::N(name);
    const Element* found = parent_->FindChild(name_);
    if (found == nullptr) throw XNotRegisteredInParrent();
    // A stranger enters the index too; kept like an unlinked child, it leaves the index when it dies.
    if (found != this && !parent_->IsChild(this)) parent_->Keep(*this);
    parent_->family_->index.Erase(name_);
    name_ = name;
    parent_->family_->index.Set(name_, this);
}

void Element::EraseAttribute(const std::string& name) {
    if (attributes_) attributes_->erase(name);
}

void Element::EraseAttribute(AttributeMap::iterator& it) {
    if (attributes_ && it != attributes_->end()) it = attributes_->erase(it);
}

void Element::Keep(Base& node) {
    UnlinkedNodes::Keep(node, *this);
    hasUnlinked_ = true;
}

Element::ChildList::iterator Element::Unlink(ChildList::iterator it) {
    Keep(**it);
    return family_->children.erase(it);
}

void Element::EraseElement(ChildList::iterator& it) {
    if (!family_ || it == family_->children.end()) return;
    if (parent_ != nullptr && parent_->family_) parent_->family_->index.Erase((*it)->name_);
    it = Unlink(it);
}

void Element::EraseElements(const std::string& name) {
    if (!family_) return;
    for (auto it = family_->children.begin(); it != family_->children.end();) {
        if ((*it)->name_ == name)
            EraseElement(it);
        else
            ++it;
    }
}

void Element::clear() {
    if (attributes_) attributes_->clear();
    if (!family_) return;
    family_->index = {};
    for (auto it = family_->children.begin(); it != family_->children.end();) it = Unlink(it);
}

const Element* Element::Find(const std::string& path) const {
    const Element* element = this;
    PathParts parts(path);
    for (std::string_view part; element != nullptr && parts.Next(part);) element = element->FindChild(part);
    return element;
}

std::string Element::ToString(const std::string& path) const {
    const Element* element = Find(path);
    return element != nullptr ? element->value_ : std::string();
}

int Element::ToInt(const std::string& path) const { return ToInteger(ToString(path)); }

double Element::ToDouble(const std::string& path) const { return ToReal(ToString(path)); }

const std::string& Element::AttributeValue(const std::string& name) const {
    static const std::string none;
    const AttributeMap& attributes = Attributes();
    const auto entry = attributes.find(name);
    return entry != attributes.end() ? entry->second.V() : none;
}

Element::AttributeMap& Element::Attributes() {
    if (!attributes_) attributes_ = std::make_unique<AttributeMap>();
    return *attributes_;
}

const Element::AttributeMap& Element::Attributes() const {
    static const AttributeMap& none = *new AttributeMap;  // never destroyed: static trees are read during exit
    return attributes_ ? *attributes_ : none;
}

Element::ChildList& Element::Children() {
    if (!family_) family_ = std::make_unique<Family>();
    return family_->children;
}

const Element::ChildList& Element::Children() const {
    static const ChildList& none = *new ChildList;
    return family_ ? family_->children : none;
}

std::string GetFullName(const Element& element) {
    std::vector<const Element*> climb;
    const Element* mark = nullptr;  // moves on at each power of two, so that a circle of any length comes back to it
    for (const Element* at = &element; at != nullptr; at = at->P()) {
        if (at == mark) return {};
        climb.push_back(at);
        if (std::has_single_bit(climb.size())) mark = at;
    }
    std::string name = climb.back()->N();
    for (auto at = climb.rbegin() + 1; at != climb.rend(); ++at) name += "." + (*at)->N();
    return name;
}

}  // namespace KM::XML
