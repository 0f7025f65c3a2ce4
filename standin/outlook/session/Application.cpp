// Outlook's application object.
#include "standin/outlook/session/Application.h"

#include "standin/mailbox/Platform.h"
#include "standin/outlook/folders/Folder.h"
#include "standin/outlook/session/NewItems.h"
#include "standin/outlook/session/Session.h"

namespace standin::outlook {
namespace {

ApplicationObject* g_application = nullptr;

/// Outlook's product code: release 16, English, 64 bits.
constexpr const wchar_t* kProductCode = L"{90160000-0011-0409-1000-0000000FF1CE}";
constexpr const wchar_t* kOutlook = L"Outlook";

std::wstring Name(ApplicationObject&) {
    return kOutlook;
}

std::wstring ProductCode(ApplicationObject&) {
    return kProductCode;
}

std::wstring Version(ApplicationObject&) {
    return TheSwitches().versionText;
}

std::wstring DefaultProfileName(ApplicationObject&) {
    return World().OwnProfileName();
}

ComPtr<Object> GetNamespace(ApplicationObject&, const Arguments& arguments) {
    if (!mailbox::SameIgnoringCase(arguments.Text(0), L"MAPI"))
        throw InvalidValue();
    return TheSwitches().withholdNamespace ? nullptr : TheNameSpace();
}

ComPtr<ItemObject> CreateItemOfType(ApplicationObject&, const Arguments& arguments) {
    return CreateItem(arguments.Number(0));
}

ComPtr<ItemObject> CreateItemFromTemplate(ApplicationObject&, const Arguments& arguments) {
    constexpr std::size_t kPath = 0, kFolder = 1;
    const ComPtr<FolderObject> folder =
        arguments.IsGiven(kFolder) ? arguments.As<FolderObject>(kFolder) : nullptr;
    return CreateItemFromFile(arguments.Text(kPath), folder ? &folder->Folder() : nullptr);
}

void Quit(ApplicationObject&) {
    LogOff();
}

constexpr Row kRows[] = {
    {L"CreateItem", Get<CreateItemOfType>},
    {L"CreateItemFromTemplate", Get<CreateItemFromTemplate>},
    {L"DefaultProfileName", Get<DefaultProfileName>},
    {L"GetNamespace", Get<GetNamespace>},
    {L"IsTrusted", Always<true>},
    {L"Name", Get<Name>},
    {L"ProductCode", Get<ProductCode>},
    {L"Quit", Get<Quit>},
    {L"Version", Get<Version>},
};

const Kind kKind{L"Application", 0x00063001, 0, kRows};

} // namespace

ApplicationObject::ApplicationObject() : Object(kKind) {
    g_application = this;
}

ApplicationObject::~ApplicationObject() {
    g_application = nullptr;
}

ComPtr<Object> TheApplication() {
    return g_application ? ComPtr<Object>(g_application) : ComPtr<Object>(Make<ApplicationObject>());
}

} // namespace standin::outlook
