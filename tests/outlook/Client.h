// A late-bound client, as a script engine is one, and the ground that the tests of the Outlook stand-in stand
// on.
#pragma once

#include "standin/mailbox/Mailbox.h"
#include "standin/outlook/Control.h"
#include "standin/outlook/registration/Registration.h"
#include "standin/watch/Watch.h"

#include <windows.h>

#include <ole2.h>

#include <comdef.h>

#include <gtest/gtest.h>

#include <concepts>
#include <source_location>
#include <string>
#include <vector>

namespace outlook_tests {

class Object;

/// An argument, or the value of a property.
class Value : public _variant_t {
public:
    Value(const _variant_t& value) : _variant_t(value) {}
    Value(const wchar_t* text) : _variant_t(text) {}
    Value(const std::wstring& text) : _variant_t(text.c_str()) {}
    Value(int number) : _variant_t(static_cast<long>(number)) {}
    Value(std::same_as<bool> auto truth) : _variant_t(truth) {}
    Value(const Object& object);
};
using Values = std::vector<Value>;
_variant_t Missing();
_variant_t Date(double days);

/// A member and its value.
struct Is {
    std::wstring member;
    Value value;
};
using Facts = std::vector<Is>;
/// The line of the test that failures name.
using Where = std::source_location;

/// How a call ended.
struct Answer {
    HRESULT status = S_OK; ///< what Invoke answered
    HRESULT scode = S_OK;  ///< of the exception, if it was one
    std::wstring source, description;
    UINT badArgument = UINT_MAX;
    _variant_t value;

    /// The status that counts: the exception's, or Invoke's.
    HRESULT Status() const { return status == DISP_E_EXCEPTION ? scode : status; }
};

/// An object, or nothing, which has no members. Get, Put and Call expect success, and the Try forms tell.
class Object {
public:
    Object() = default;
    explicit Object(const _variant_t& value);

    explicit operator bool() const { return m_object != nullptr; }
    IDispatch* Raw() const { return m_object; }

    Answer TryGet(const wchar_t* name, const Values& arguments = {}) const;
    Answer TryPut(const wchar_t* name, const Value& value) const;
    Answer TryCall(const wchar_t* name, const Values& arguments = {}) const;
    Answer Invoke(DISPID id, WORD flags, const Values& arguments) const;
    /// Whether it is of the interface whose id begins like this.
    bool IsA(std::uint32_t interfaceId) const;
    /// DISPID_UNKNOWN for an unknown name.
    DISPID IdOf(const wchar_t* name) const;

    HRESULT Status(const wchar_t* name, const Values& arguments = {}) const {
        return TryCall(name, arguments).Status();
    }

    _variant_t Get(const wchar_t* name) const;
    void Put(const wchar_t* name, const Value& value) const;
    _variant_t Call(const wchar_t* name, const Values& arguments = {}) const;

    Object Child(const wchar_t* name, const Values& arguments = {}) const {
        return Object(Call(name, arguments));
    }
    Object Item(const Value& place) const { return Child(L"Item", {place}); }
    std::wstring Text(const wchar_t* name) const;
    int Number(const wchar_t* name) const;

private:
    _com_ptr_t<_com_IIID<IDispatch, &IID_IDispatch>> m_object;
};

/// The members of an object have these values, of these very types; times to the second.
void Expect(const Object& object, const Facts& facts, Where where = Where::current());
void ExpectValue(const _variant_t& value, const Is& fact);
void PutAll(const Object& object, const Facts& facts);
/// None of these values is taken.
void ExpectRefused(const Object& object, HRESULT status, const Facts& facts, Where where = Where::current());

/// Whatever a value is, as text: bytes in hexadecimal, a bar between the elements of other arrays.
std::wstring AsText(const _variant_t& value);
std::wstring Hex(std::uint32_t number, int digits = 8);

/// A fresh sample world, and a watch over it, for a client that works with MAPI too and may take MAPIOBJECTs.
/// At its end nothing may be left alive, and no rule broken.
class OutlookTest : public testing::Test {
protected:
    OutlookTest();
    ~OutlookTest() override;
    OutlookTest(const OutlookTest&) = delete;
    OutlookTest& operator=(const OutlookTest&) = delete;

    Object Application() const;
    /// Before anybody logs on, and after.
    Object QuietNameSpace() const { return Application().Child(L"GetNamespace", {L"MAPI"}); }
    Object NameSpace() const;
    Object DefaultFolder(int number) const;
    Object Items(int folder) const { return DefaultFolder(folder).Child(L"Items"); }
    Object Archive() const { return NameSpace().Child(L"Folders", {L"Archive"}); }
    /// An item of a folder's own type: with a subject and saved.
    Object AddItem(const Object& folder, const std::wstring& subject) const;
    /// A message that comes into the Inbox, as clients open it.
    Object Received(const wchar_t* messageClass, void (*fill)(standin::mailbox::PropertyBag&) = nullptr);

    standin::outlook::Control& Outlook() { return *m_control; }
    standin::mailbox::Mailbox& World() { return m_control->World(); }
    standin::Recorder& Watch() { return m_watch; }

private:
    standin::outlook::Control* m_control;
    standin::outlook::LiveCounts m_before; // what an earlier test left behind is that test's fault alone
    standin::Recorder m_watch;
};

/// Numbers of OlDefaultFolders and OlItemType that the tests use.
inline constexpr int kDeletedItems = 3, kInbox = 6, kCalendar = 9, kContacts = 10, kNotes = 12, kTasks = 13;
inline constexpr int kMailItem = 0, kAppointmentItem = 1, kContactItem = 2;
/// A date that is none.
inline constexpr double kNoDate = 949998;

/// Lists refuse places that they haven't got so.
bool IsOutOfBounds(const Answer& answer);

} // namespace outlook_tests
