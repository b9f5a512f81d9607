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

// Children on their way out. A tree can be deeper than the stack, so each element hands its own children over before it
// goes, and no destructor ever meets a grandchild. Nothing is allocated meanwhile.
class Element::DoomedChildren {
public:
    explicit DoomedChildren(ChildList& children) { doomed_.swap(children); }
    DoomedChildren(const DoomedChildren&) = delete;
    DoomedChildren& operator=(const DoomedChildren&) = delete;

    ~DoomedChildren() {
        while (!doomed_.empty()) {
            const std::unique_ptr<Base> node(doomed_.front());
            doomed_.pop_front();
            if (Element* element = AsElement(node.get())) doomed_.splice(doomed_.begin(), element->children_);
        }
    }

private:
    ChildList doomed_;
};

Element::Element(const std::string& name, const std::string& value, Element* parent) : Base(name, value, parent) {}

Element::Element(const Element& source) : Base({}, {}, nullptr) { *this = source; }

Element::~Element() {
    const Element* keeper = isUnlinked_ ? UnlinkedNodes::KeeperOf(*this) : nullptr;
    if (keeper != nullptr && keeper->index_) keeper->index_->EraseElement(this);
    if (hasUnlinked_) UnlinkedNodes::Orphan(*this);
    const DoomedChildren doomed(children_);
}

Element* Element::Clone() const { return new Element(*this); }

const Element& Element::operator=(const Element& r) {
    if (this != &r) attributes_ = r.attributes_;
    name_ = r.name_;
    session_ = r.session_;
    if (!r.value_.empty()) value_ = r.value_;
    if (r.parent_ == nullptr) parent_ = nullptr;

    // The former children die last: `r` can be one of them, or stand below one.
    const DoomedChildren former(children_);
    index_.reset();
    for (const Base* child : r.children_) AddCloned(CloneTree(*child));
    return *this;
}

std::unique_ptr<Element> Element::CloneWithoutChildren(const Element& source) {
    auto clone = std::make_unique<Element>(source.name_, source.value_);
    clone->attributes_ = source.attributes_;
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
        for (const Base* child : from->children_) {
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
    CheckListRoom(children_.size());
    children_.push_back(child.get());
    child.release();
}

void Element::AddToIndex(const std::string& name, Element* child) {
    if (!index_) index_ = std::make_unique<NameIndex>();
    index_->Set(name, child);
}

Element& Element::AddIndexed(std::unique_ptr<Element> child) {
    Element& added = *child;
    added.parent_ = this;
    AddChild(std::move(child));
    AddToIndex(added.name_, &added);
    return added;
}

void Element::AddCloned(std::unique_ptr<Base> clone) {
    Element* element = AsElement(clone.get());
    AddChild(std::move(clone));
    if (element == nullptr) return;
    element->parent_ = this;
    // Under the own name, not the child's: hosts rely on it that a copy makes its keys anew beside the copied ones.
    AddToIndex(name_, element);
}

const Element& Element::operator+=(const Element& child) { return AddIndexed(std::make_unique<Element>(child)); }

const Element& Element::operator+=(const Attribute& attribute) {
    const auto place = attributes_.lower_bound(attribute.N());
    if (place != attributes_.end() && place->first == attribute.N()) {
        place->second = attribute;
        return *this;
    }
    CheckMapRoom(attributes_.size());
    attributes_.emplace_hint(place, attribute.N(), attribute);
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
    const auto place = attributes_.lower_bound(name);
    if (place != attributes_.end() && place->first == name) {
        place->second = Attribute(name, value);
        return;
    }
    CheckMapRoom(attributes_.size());
    attributes_.emplace_hint(place, std::piecewise_construct, std::forward_as_tuple(name),
                             std::forward_as_tuple(name, value));
}

Element* Element::FindChild(std::string_view name) const { return index_ ? index_->Find(name) : nullptr; }

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
    for (const Base* child : children_)
        if (child == element) return true;
    return false;
}

void Element::N(const std::string& name) {
    if (parent_ == nullptr) return Base::N(name);
    const Element* found = parent_->FindChild(name_);
    if (found == nullptr) throw XNotRegisteredInParrent();
    // A stranger enters the index too; kept like an unlinked child, it leaves the index when it dies.
    if (found != this && !parent_->IsChild(this)) parent_->Keep(*this);
    parent_->index_->Erase(name_);
    Base::N(name);
    parent_->AddToIndex(name_, this);
}

void Element::EraseAttribute(const std::string& name) { attributes_.erase(name); }

void Element::EraseAttribute(AttributeMap::iterator& it) {
    if (it != attributes_.end()) it = attributes_.erase(it);
}

void Element::Keep(Base& node) {
    UnlinkedNodes::Keep(node, *this);
    hasUnlinked_ = true;
}

Element::ChildList::iterator Element::Unlink(ChildList::iterator it) {
    Keep(**it);
    return children_.erase(it);
}

void Element::EraseElement(ChildList::iterator& it) {
    if (it == children_.end()) return;
    if (parent_ != nullptr && parent_->index_) parent_->index_->Erase((*it)->name_);
    it = Unlink(it);
}

void Element::EraseElements(const std::string& name) {
    for (auto it = children_.begin(); it != children_.end();) {
        if ((*it)->name_ == name)
            EraseElement(it);
        else
            ++it;
    }
}

void Element::clear() {
    attributes_.clear();
    index_.reset();
    for (auto it = children_.begin(); it != children_.end();) it = Unlink(it);
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
    const auto entry = attributes_.find(name);
    return entry != attributes_.end() ? entry->second.V() : none;
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
