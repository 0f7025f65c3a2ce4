// Every member of every kind: it answers, or refuses with E_NOTIMPL what needs a user interface or another
// program, and takes back what it gave.
#include "Stored.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

namespace outlook_tests {
namespace {

struct Member {
    std::wstring name, access;
};
using Model = std::map<std::wstring, std::vector<Member>>;

Model ReadModel() {
    Model model;
    std::ifstream file(VARDEN_OBJECT_MODEL);
    for (std::string line; std::getline(file, line);) {
        std::istringstream fields(line);
        std::string interfaceName, member, access;
        std::getline(fields, interfaceName, '\t');
        std::getline(fields, member, '\t');
        std::getline(fields, access, '\t');
        model[{interfaceName.begin(), interfaceName.end()}].push_back(
            {{member.begin(), member.end()}, {access.begin(), access.end()}});
    }
    return model;
}

/// Objects and documents that only Outlook's user interface, its designers or its servers have; time zones as
/// objects.
const std::set<std::wstring> kRefused{
    L"Actions",     L"BusinessCardLayoutXml", L"Conflicts", L"FormDescription",
    L"EndTimeZone", L"GetInspector",          L"Links",     L"StartTimeZone",
};
/// Methods of the same sort, without arguments.
const std::set<std::wstring> kRefusedMethods{
    L"ForwardAsBusinessCard",  L"ForwardAsVcard",          L"GetConversation",      L"PrintOut", L"SetACLs",
    L"ShowBusinessCardEditor", L"ShowCheckFullNameDialog", L"ShowCategoriesDialog",
};
/// Properties of items that are marked as tasks, and objects that are only handed out.
const std::set<std::wstring> kNotTakenBack{
    L"TaskDueDate",      L"TaskStartDate",    L"TaskSubject", L"ToDoTaskOrdinal", L"TaskCompletedDate",
    L"Sender",           L"SendUsingAccount", L"RTFBody",     L"Members",         L"OneOffMembers",
    L"SharingItem.Type", // of an item that is no sharing message yet
};

struct KindRow {
    const wchar_t* interfaceName;
    const wchar_t* messageClass;
};

void PrintTo(const KindRow& row, std::ostream* out) {
    const std::wstring name = row.interfaceName;
    *out << std::string(name.begin(), name.end());
}

class MemberTest : public KindTest, public testing::WithParamInterface<KindRow> {
protected:
    static std::vector<Member> Members() {
        static const Model model = ReadModel();
        const auto members = model.find(GetParam().interfaceName);
        EXPECT_NE(members, model.end());
        return members == model.end() ? std::vector<Member>() : members->second;
    }

    Object Item() const {
        const std::wstring messageClass = GetParam().messageClass;
        if (messageClass == L"IPM.Storage")
            return DefaultFolder(kInbox).Child(L"GetStorage", {L"Storage", 0});
        const bool canBeMade = messageClass.starts_with(L"IPM.");
        const Object item = canBeMade ? New(messageClass) : New(kMailItem);
        item.Put(L"MessageClass", messageClass);
        return Reopened(item);
    }
};

TEST_P(MemberTest, PropertiesAnswerAndTakeTheirValueBack) {
    const Object item = Item();
    for (const Member& member : Members()) {
        if (member.access == L"method")
            continue;
        const Answer answer = item.TryGet(member.name.c_str());
        const HRESULT expected = kRefused.contains(member.name) ? E_NOTIMPL : S_OK;
        EXPECT_EQ(answer.Status(), expected) << member.name;
        const bool goesBack = member.access == L"get/put" && expected == S_OK &&
                              !kNotTakenBack.contains(member.name) &&
                              !kNotTakenBack.contains(GetParam().interfaceName + (L"." + member.name));
        if (!goesBack)
            continue;
        const WORD how = answer.value.vt == VT_DISPATCH ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT;
        EXPECT_EQ(item.Invoke(item.IdOf(member.name.c_str()), how, {answer.value}).Status(), S_OK)
            << member.name;
    }
}

TEST_P(MemberTest, MethodsOfOtherProgramsAreRefused) {
    const Object item = Item();
    for (const Member& member : Members())
        if (kRefusedMethods.contains(member.name)) {
            const Answer answer = item.TryCall(member.name.c_str());
            EXPECT_EQ(answer.Status(), E_NOTIMPL) << member.name;
            EXPECT_NE(answer.description.find(member.name), std::wstring::npos) << answer.description;
        }
}

TEST_F(KindTest, MethodsOfOtherProgramsWithArgumentsAreRefused) {
    const Object contact = New(kContactItem), mail = New(kMailItem);
    EXPECT_EQ(contact.Status(L"AddBusinessCardLogoPicture", {L"C:\\logo.png"}), E_NOTIMPL);
    EXPECT_EQ(contact.Status(L"SaveBusinessCardImage", {L"C:\\card.png"}), E_NOTIMPL);
    EXPECT_EQ(contact.Status(L"ShowCheckAddressDialog", {1}), E_NOTIMPL);
    EXPECT_EQ(contact.Status(L"ShowCheckPhoneDialog", {1}), E_NOTIMPL);
    EXPECT_EQ(mail.Status(L"AddBusinessCard", {contact}), E_NOTIMPL);
    EXPECT_EQ(contact.Status(L"ShowCheckPhoneDialog"), DISP_E_BADPARAMCOUNT);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, MemberTest,
    testing::Values(KindRow{L"AppointmentItem", L"IPM.Appointment"},
                    KindRow{L"MeetingItem", L"IPM.Schedule.Meeting.Request"},
                    KindRow{L"TaskItem", L"IPM.Task"}, KindRow{L"TaskRequestItem", L"IPM.TaskRequest"},
                    KindRow{L"TaskRequestAcceptItem", L"IPM.TaskRequest.Accept"},
                    KindRow{L"TaskRequestDeclineItem", L"IPM.TaskRequest.Decline"},
                    KindRow{L"TaskRequestUpdateItem", L"IPM.TaskRequest.Update"},
                    KindRow{L"ContactItem", L"IPM.Contact"}, KindRow{L"DistListItem", L"IPM.DistList"},
                    KindRow{L"DocumentItem", L"IPM.Document.txtfile"},
                    KindRow{L"JournalItem", L"IPM.Activity"}, KindRow{L"MailItem", L"IPM.Note"},
                    KindRow{L"NoteItem", L"IPM.StickyNote"}, KindRow{L"PostItem", L"IPM.Post"},
                    KindRow{L"RemoteItem", L"IPM.Remote"}, KindRow{L"ReportItem", L"REPORT.IPM.Note.NDR"},
                    KindRow{L"SharingItem", L"IPM.Sharing"}, KindRow{L"StorageItem", L"IPM.Storage"}),
    [](const testing::TestParamInfo<KindRow>& row) {
        const std::wstring name = row.param.interfaceName;
        return std::string(name.begin(), name.end());
    });

} // namespace
} // namespace outlook_tests
