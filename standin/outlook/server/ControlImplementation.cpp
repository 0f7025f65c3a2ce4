// The switches of the stand-in, within its library.
#include "standin/outlook/server/ControlImplementation.h"

#include "standin/mailbox/MailboxFolder.h"
#include "standin/mapi/Views.h"
#include "standin/outlook/automation/Object.h"
#include "standin/outlook/session/Session.h"

namespace standin::outlook {
namespace {

class ControlImplementation final : public Control {
public:
    void SetWatch(Watch* watch) override { SetCurrentWatch(watch); }

    LiveCounts Live() const override {
        const mapi::Counts counts = mapi::Live();
        return {LiveObjects(), counts.objects, counts.buffers, counts.sessions};
    }

    void Reset() override {
        TheSwitches() = {};
        LogOff();
        outlook::SetWorld(mailbox::MakeSampleWorld());
    }

    OpenReport OpenMailbox(const std::wstring& folder) override {
        mailbox::LoadReport loaded;
        std::unique_ptr<mailbox::Mailbox> world = mailbox::OpenMailboxFolder(folder, loaded);
        OpenReport report{world != nullptr, std::move(loaded.error), std::move(loaded.leftOut)};
        if (world)
            outlook::SetWorld(std::move(world));
        return report;
    }

    mailbox::Mailbox& World() override { return outlook::World(); }

    void SetVersionText(const std::wstring& text) override { TheSwitches().versionText = text; }
    void RefuseLogon(HRESULT status) override { TheSwitches().logonRefusal = status; }
    void WithholdNamespace(bool withhold) override { TheSwitches().withholdNamespace = withhold; }
    void WithholdMapiObject(bool withhold) override { TheSwitches().withholdMapiObject = withhold; }
    void CloseWindowsAtOnce(bool close) override { TheSwitches().closeWindowsAtOnce = close; }
    void SetUnknownClass(const std::wstring& messageClass) override {
        TheSwitches().unknownClass = messageClass;
    }
};

} // namespace

Control& TheControl() {
    static ControlImplementation control;
    HostedByControl();
    return control;
}

} // namespace standin::outlook
