#pragma once
// What materials and compositions have in common: description, comments, tags and values of
// custom properties.
#include <vantlib/CustomProperty.h>
#include <vantlib/Tag.h>

namespace vantlib {

class AnnotatedObject : public Object {
public:
    const OdString& description() const { return m_description; }
    void set_description(const OdString& text) { m_description = text; }
    const OdString& comments() const { return m_comments; }
    void set_comments(const OdString& text) { m_comments = text; }

    // Tags in the order they were added; a name occurs at most once (case-insensitive).
    const Tags& tags() const { return m_tags; }
    void set_tags(const Tags& tags);
    void clear_tags() { m_tags.clear(); }
    // Adds a tag of that name unless the object has it already; false when it had it.
    bool add_tag(const OdString& name);
    bool add_tag(const QcSmartPtr<Tag>& tag);
    bool remove_tag(const OdString& name);
    bool has_tag(const OdString& name) const;

    // Properties are matched by name (case-insensitive).
    const CustomValues& custom_values() const { return m_customValues; }
    bool has_custom_value(const QcSmartPtr<CustomProperty>& property) const;
    // The value, or an empty text when the object has none.
    OdString custom_value(const QcSmartPtr<CustomProperty>& property) const;
    // Throws ConsistencyError when the property does not apply to this kind of object.
    void set_custom_value(const QcSmartPtr<CustomProperty>& property, const OdString& value);
    bool clear_custom_value(const QcSmartPtr<CustomProperty>& property);

protected:
    using Object::Object;

private:
    friend class LibraryAccess;
    OdString m_description;
    OdString m_comments;
    Tags m_tags;
    CustomValues m_customValues;
};

}  // namespace vantlib
