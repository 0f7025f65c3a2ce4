// What the tests of calendar and tasks have in common: dates, people, new items.
#pragma once

#include "Stored.h"

namespace outlook_tests {

// Numbers of OlDefaultFolders and OlItemType.
inline constexpr int kOutbox = 4, kSentItems = 5, kTaskItem = 3;

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
    /// The appointment that the newest message is about.
    Object Appointment(bool save) const { return Newest(kInbox).Child(L"GetAssociatedAppointment", {save}); }
    int Count(int folder) const { return Folder(folder).Child(L"Items").Number(L"Count"); }
    const Object& NameSpace() const { return m_nameSpace; }

private:
    Object m_nameSpace;
};

/// A new item of the default folder.
class CalendarTest : public KindTest {
protected:
    Object NewItem(int itemType) const;
    Object NewAppointment(const _variant_t& start, int minutes) const;

    standin::mailbox::Folder& Folder(int number);
    /// The one message of a folder that has this subject; null for none, or several.
    std::shared_ptr<standin::mailbox::Message> Find(int folder, const std::wstring& subject);
};

} // namespace outlook_tests
