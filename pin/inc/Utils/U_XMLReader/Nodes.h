#pragma once

#include <string>

#include "KmApi.h"

namespace KM::XML {

class Element;

/// Names of the elements that stand for what a file holds between its elements: the text is the element's value.
inline constexpr char CommentName[] = "!COMMENT!";
inline constexpr char CDATAName[] = "!CDATA!";
inline constexpr char CommandName[] = "!COMMAND!";

/// What all nodes of a document have: a name, a value, a link to the element above, and the stamp of the sessions that
/// made and changed the node (Session.h). Names are not checked, any text will do.
class KM_API Base {
public:
    /// Stamps the node with the current session. `parent` is a link only: it must outlive its use, and null is a root.
    Base(const std::string& name, const std::string& value, Element* parent);
    /// Name, value, parent and stamp of the source, as they are. The copy stands in no list of children.
    Base(const Base& source);
    Base& operator=(const Base& source);
    virtual ~Base();

    /// A deep copy on the free store, for the caller to own.
    virtual Base* Clone() const = 0;

    virtual void N(const std::string& name);
    virtual const std::string& N() const;

    /// The value, to be written without a stamp.
    virtual std::string& VAddress();

    /// Sets the value. A new value adds the current session to the stamp; the value that stands leaves it alone.
    virtual void V(const std::string& value);
    virtual const std::string& V() const;

    virtual Element* P();
    virtual const Element* P() const;

    int SettingSession() const;
    void SettingSession(int session);

private:
    friend class Element;
    friend class UnlinkedNodes;

    std::string name_;
    std::string value_;
    Element* parent_;
    int session_;
    bool isUnlinked_ = false;
    bool hasOtherKey_ = false;  // an index may know this node under a name that is not its own
};

/// A name with a value, held by value in its element.
class KM_API Attribute : public Base {
public:
    /// Declared for handlers; nothing throws it.
    class XNotRegisteredInParrent {};
    class XParrentNotFound {};

    explicit Attribute(const std::string& name, const std::string& value = {}, Element* parent = nullptr);

    Attribute* Clone() const override;

    using Base::N;
    /// Changes the name of an attribute that has no parent. One that has a parent throws `XParrentNotFound`: it would
    /// stay in its element under the old name.
    void N(const std::string& name) override;
};

/// A comment in a tree that is built by hand. (A reader makes an `Element` named `CommentName` of it.)
class KM_API Comment : public Base {
public:
    explicit Comment(const std::string& text, Element* parent = nullptr);
    Comment(const std::string& name, const std::string& text, Element* parent);

    Comment* Clone() const override;
};

/// A CDATA section in a tree that is built by hand. (A reader makes an `Element` named `CDATAName` of it.)
class KM_API CDATA : public Base {
public:
    explicit CDATA(const std::string& text, Element* parent = nullptr);
    CDATA(const std::string& name, const std::string& text, Element* parent);

    CDATA* Clone() const override;
};

}  // namespace KM::XML
