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

#include <initializer_list>
#include <string>

namespace outlook_tests {

/// An argument, or the value of a property.
_variant_t Value(const wchar_t* text);
inline _variant_t Value(const std::wstring& text) {
    return Value(text.c_str());
}
inline _variant_t Value(int number) {
    return _variant_t(static_cast<long>(number));
}
inline _variant_t Value(bool truth) {
    return _variant_t(truth);
}
_variant_t Missing();
_variant_t Date(double days);

using Values = std::initializer_list<_variant_t>;

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

/// The answer where GetIDsOfNames knows no such member.
Answer UnknownName();

/// An object, or nothing. Get, Put and Call expect success, and the Try forms tell.
class Object {
public:
    Object() = default;
    explicit Object(const _variant_t& value);

    explicit operator bool() const { return m_object != nullptr; }
    IDispatch* Raw() const { return m_object; }

    Answer TryGet(const wchar_t* name, Values arguments = {}) const;
    Answer TryPut(const wchar_t* name, const _variant_t& value) const;
    Answer TryCall(const wchar_t* name, Values arguments = {}) const;
    Answer Invoke(DISPID id, WORD flags, Values arguments) const;
    /// DISPID_UNKNOWN for an unknown name.
    DISPID IdOf(const wchar_t* name) const;

    _variant_t Get(const wchar_t* name) const;
    void Put(const wchar_t* name, const _variant_t& value) const;
    _variant_t Call(const wchar_t* name, Values arguments = {}) const;

    Object Child(const wchar_t* name, Values arguments = {}) const { return Object(Call(name, arguments)); }
    std::wstring Text(const wchar_t* name) const;
    int Number(const wchar_t* name) const;

private:
    _com_ptr_t<_com_IIID<IDispatch, &IID_IDispatch>> m_object;
};

/// A fresh sample world, and a watch over it, for a client that works with MAPI too and may take MAPIOBJECTs.
/// At its end nothing may be left alive, and no rule broken.
class OutlookTest : public testing::Test {
protected:
    OutlookTest();
    ~OutlookTest() override;
    OutlookTest(const OutlookTest&) = delete;
    OutlookTest& operator=(const OutlookTest&) = delete;

    Object Application() const;
    /// Logged on.
    Object NameSpace() const;
    Object DefaultFolder(int number) const;
    /// A saved item in a folder, with a subject.
    Object AddItem(const Object& folder, const std::wstring& subject) const;

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

} // namespace outlook_tests
