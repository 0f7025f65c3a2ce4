// What the tests of calendar and tasks have in common: dates, stored properties, the messages that files of
// real mail clients hold.
#pragma once

#include "Client.h"

#include <optional>

namespace outlook_tests {

// Property sets, and numbers of OlDefaultFolders and OlItemType.
inline constexpr GUID kAppointmentSet{0x00062002, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr GUID kTaskSet{0x00062003, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr GUID kCommonSet{0x00062008, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr GUID kMeetingSet{
    0x6ED8DA90, 0x450B, 0x101B, {0x98, 0xDA, 0x00, 0xAA, 0x00, 0x3F, 0x13, 0x05}};
inline constexpr int kOutbox = 4, kSentItems = 5, kTaskItem = 3;
inline constexpr double kNoDate = 949998;

/// A local date and time.
_variant_t At(int year, int month, int day, int hour = 0, int minute = 0);
/// A time of day without a day.
_variant_t TimeOfDay(int hour, int minute = 0);
/// "2026-03-02 09:00"; "none" for no date.
std::wstring Shown(const _variant_t& date);

/// Somebody at work: logs on to a profile, and off in the end.
class Person {
public:
    Person(const Object& application, const wchar_t* profile);
    ~Person();
    Person(const Person&) = delete;
    Person& operator=(const Person&) = delete;

    Object Folder(int number) const { return m_nameSpace.Child(L"GetDefaultFolder", {Value(number)}); }
    /// The newest item of a folder.
    Object Newest(int folder) const { return Folder(folder).Child(L"Items").Child(L"GetLast"); }
    int Count(int folder) const { return Folder(folder).Child(L"Items").Number(L"Count"); }
    const Object& NameSpace() const { return m_nameSpace; }

private:
    Object m_nameSpace;
};

/// A new item of the default folder.
class CalendarTest : public OutlookTest {
protected:
    Object NewItem(int itemType) const;
    Object NewAppointment(const _variant_t& start, int minutes) const;

    standin::mailbox::Folder& Folder(int number);
    /// The one message of a folder that has this subject; null for none, or several.
    std::shared_ptr<standin::mailbox::Message> Find(int folder, const std::wstring& subject);
    /// The message of a file of a real mail client, put into a folder and opened. Nothing where the files are
    /// missing.
    Object OpenReal(const char* file, int folder);
};

/// A named property of a message; nothing if it hasn't got it.
std::optional<standin::mailbox::Value> Named(const standin::mailbox::PropertyObject& message, const GUID& set,
                                             unsigned number, unsigned type);
template <class T>
std::optional<T> NamedAs(const standin::mailbox::PropertyObject& message, const GUID& set, unsigned number,
                         unsigned type) {
    auto value = Named(message, set, number, type);
    const T* native = value ? std::get_if<T>(&*value) : nullptr;
    return native ? std::optional<T>(*native) : std::nullopt;
}
/// A time of a message, in UTC, as Shown shows dates.
std::wstring ShownTime(const standin::mailbox::Value& time);

} // namespace outlook_tests
