#pragma once

#include <list>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "KmApi.h"
#include "Utils/U_XMLReader/Nodes.h"

namespace KM::XML {

/// A node with attributes and children. It owns its children: they die with it, however deep the tree. Children are
/// walked through `Children()`, in document order, and found by name through a dotted path and an index.
///
/// Paths: parts are separated by dots, blanks are dropped wherever they stand. "a.b" names a child b of the child a,
/// ".b" the same as "b", "a..b" goes through a child with an empty name, and a path without parts is the element
/// itself.
///
/// The index knows one child per name, the last one that was added under it. A copied element can be walked but not
/// searched, see `operator=`; search the original.
///
/// A tree is used by one thread at a time. Readers beside each other must keep to `ToString` and its kin and to const
/// elements: `operator[]` writes where a part is missing, and a list or map that can be written to is made when it is
/// first asked for. A list of children beyond 357,913,940 entries, or a map beyond
/// 97,612,892, throws `std::length_error`.
class KM_API Element : public Base {
public:
    /// `N` found no entry of this element in its parent.
    class XNotRegisteredInParrent {};

    using AttributeMap = std::map<std::string, Attribute>;
    using ChildList = std::list<Base*>;

    /// An element without children. It does not enter the children of `parent`.
    explicit Element(const std::string& name, const std::string& value = {}, Element* parent = nullptr);
    /// A root that is then assigned from `source`.
    Element(const Element& source);
    ~Element() override;

    Element* Clone() const override;

    /// Becomes a copy of `r`: attributes, name, stamp, and children copied to the ground. It differs from `r` in this:
    /// - an empty value of `r` leaves the value here;
    /// - the parent stays, unless `r` has none: then it becomes null;
    /// - the index holds one entry, this element's own name, for the last element among its children. So children of a
    ///   copy are not found by name, and `operator[]` makes a new child beside the copied one.
    ///
    /// The children that stood here before are destroyed. Assigned to itself, an element loses its children. Element
    /// and source may lie in one tree: a source below this element is read before it dies; a source above it is copied
    /// with this element as far as it has then grown.
    const Element& operator=(const Element& r);

    /// Adds a deep copy of `child` behind the last child, and returns the copy. From now on the index finds it; an
    /// earlier child of this name stays, but is found no more.
    const Element& operator+=(const Element& child);
    /// Sets the attribute of this name as it is, with parent and stamp of the argument. Returns this element.
    const Element& operator+=(const Attribute& attribute);
    /// Add a copy behind the last child, with the parent of the argument; the index does not know it. Return this
    /// element.
    const Element& operator+=(const CDATA& cdata);
    const Element& operator+=(const Comment& comment);

    /// Adds a new child with no children behind the last one, as `+=` does, without the copy.
    Element& NewChild(const std::string& name, const std::string& value = {});

    /// Sets the attribute of this name to a new one without parent, as `+=` does, without the copy.
    void SetAttribute(const std::string& name, const std::string& value);

    /// The element at the path. Missing parts are made, with empty value, on a `const` element too.
    Element& operator[](const std::string& path);
    Element& operator[](const std::string& path) const;

    using Base::N;
    /// Changes the name. If there is a parent, its entry under the old name, whichever child that names, makes way for
    /// this element under the new name, whether or not this is one of its children. Throws `XNotRegisteredInParrent`,
    /// and changes nothing, if the parent has no such entry.
    void N(const std::string& name) override;

    void EraseAttribute(const std::string& name);
    /// Moves the iterator on to the next attribute; the end is left alone.
    void EraseAttribute(AttributeMap::iterator& it);

    /// Takes a child out of the list, without destroying it: whoever holds it can go on using it, as long as he likes.
    /// The iterator moves on to the next child; the end is left alone.
    ///
    /// The entry of its name goes out of the index of this element's parent, not out of this one's, so that the child
    /// is still found by name here.
    void EraseElement(ChildList::iterator& it);
    /// The same for each child with exactly this name.
    void EraseElements(const std::string& name);

    /// Takes out attributes, index and children, without destroying the children. Name and value stay.
    void clear();

    /// The value at the path, the own value for a path without parts. Makes nothing: a missing part gives an empty
    /// text.
    std::string ToString(const std::string& path = {}) const;
    /// The value as integer: ON, TRUE and Y... give 1, OFF, FALSE and N... give 0, "b0111" is binary, "0x..." is
    /// hexadecimal, all else decimal. An empty or missing value gives 1: a setting that was never given counts as on.
    int ToInt(const std::string& path = {}) const;
    /// The decimal number at the start of the value, 0.0 if there is none.
    double ToDouble(const std::string& path = {}) const;

    /// The value of an attribute; empty if there is no such attribute.
    const std::string& AttributeValue(const std::string& name) const;

    AttributeMap& Attributes();
    const AttributeMap& Attributes() const;
    /// The children in document order, never null. The list owns them.
    ChildList& Children();
    const ChildList& Children() const;

private:
    class DoomedChildren;
    struct Family;

    static std::unique_ptr<Base> CloneTree(const Base& source);
    static std::unique_ptr<Element> CloneWithoutChildren(const Element& source);

    const Element* Find(const std::string& path) const;
    Element* FindChild(std::string_view name) const;
    bool IsChild(const Element* element) const;

    void AddChild(std::unique_ptr<Base> child);
    Element& AddIndexed(std::unique_ptr<Element> child);
    void AddCloned(std::unique_ptr<Base> clone);
    void CopyAttributes(const Element& source);
    void Keep(Base& node);
    void LeaveIndex(const Element& node) const;
    ChildList::iterator Unlink(ChildList::iterator it);

    bool hasUnlinked_ = false;
    // None until they are needed: most elements are leaves, and a bare one takes little more than its two texts.
    std::unique_ptr<AttributeMap> attributes_;
    std::unique_ptr<Family> family_;
};

/// The names from the root down to the element, joined by dots; empty if the parents run in a circle.
KM_API std::string GetFullName(const Element& element);

}  // namespace KM::XML
