#pragma once
// The sentences with which the library reactor talks about an object. Each sentence is a whole
// literal per kind of object and per library, so that translators see complete sentences.
#include <wx/string.h>

#include <vantlib/Types.h>

namespace vl_app {

// "The current project (central) database already contains a material with the name:"
wxString clashAlreadyContainsText(vantlib::ObjectType type, bool project);
// Description of the Skip answer.
wxString clashKeepText(vantlib::ObjectType type, bool project);
// Description of the Overwrite answer.
wxString clashReplaceText(vantlib::ObjectType type, bool project);
// "Rename the material from the source library to:"
wxString clashRenameText(vantlib::ObjectType type);

// printf formats (wide) for an object that a library could not read: by id ("%u", "%ls") when
// the object has no name, by name ("%ls", "%ls") otherwise.
wxString loadFailedByIdFormat(vantlib::ObjectType type);
wxString loadFailedByNameFormat(vantlib::ObjectType type);

}  // namespace vl_app
