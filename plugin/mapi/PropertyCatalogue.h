// The catalogue of property tags by the field names that scripts use.
#pragma once

#include <windows.h>

#include <mapidefs.h>

#include <string>
#include <string_view>

namespace varden {

/// The property tag of a field name, compared exactly. A field with a tag of its own never touches the
/// message, which may then be null; any other is looked up among the names of the message's store, each time
/// anew, and its tag comes with type bits 0. A name that the store doesn't know comes back as a success with
/// a tag of type PT_ERROR, which the read or write that follows fails on. False, with `tag` as it was, for a
/// field that the catalogue doesn't hold and for a failed look-up.
bool mapi_PropTagFromFieldName(std::wstring_view fieldName, ULONG& tag, IMAPIProp* message);

/// The same with the look-up's status; E_INVALIDARG for a field that the catalogue doesn't hold.
HRESULT mapi_FindPropTag(std::wstring_view fieldName, ULONG& tag, IMAPIProp* message);

/// The same for one name as MAPI has it. Raises mapi::Unavailable for a null message.
HRESULT mapi_TagFromNameId(MAPINAMEID& nameId, ULONG& tag, ULONG flags, IMAPIProp* message);

/// The same for the name of a user-defined field.
bool mapi_PublicStringToPropTag(const std::wstring& name, ULONG& tag, IMAPIProp* message);

/// The tag of a field with the type that it is read or written with. A name that can't be resolved gives a
/// tag that no property has, which the read or write fails on.
ULONG mapi_TypedTag(std::wstring_view fieldName, ULONG type, IMAPIProp& message);

} // namespace varden
