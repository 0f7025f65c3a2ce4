// IMAPIFolder on a folder of the model.
#pragma once

#include "standin/mailbox/Folder.h"
#include "standin/mapi/PropObject.h"

namespace standin::mapi {

class FolderView final : public DirectObject<IMAPIFolder> {
public:
    FolderView(std::shared_ptr<mailbox::Folder> folder, mailbox::Access access, bool storeIsWritable);

    HRESULT STDMETHODCALLTYPE GetContentsTable(ULONG flags, IMAPITable** table) override;
    HRESULT STDMETHODCALLTYPE GetHierarchyTable(ULONG flags, IMAPITable** table) override;
    HRESULT STDMETHODCALLTYPE OpenEntry(ULONG size, ENTRYID* entryId, const IID* iid, ULONG flags,
                                        ULONG* type, IUnknown** object) override;
    HRESULT STDMETHODCALLTYPE SetSearchCriteria(SRestriction*, ENTRYLIST*, ULONG) override {
        return NotSupported(L"SetSearchCriteria");
    }
    HRESULT STDMETHODCALLTYPE GetSearchCriteria(ULONG, SRestriction**, ENTRYLIST**, ULONG*) override {
        return NotSupported(L"GetSearchCriteria");
    }
    HRESULT STDMETHODCALLTYPE CreateMessage(const IID* iid, ULONG flags, IMessage** message) override;
    HRESULT STDMETHODCALLTYPE CopyMessages(ENTRYLIST* list, const IID* iid, void* target, ULONG,
                                           IMAPIProgress*, ULONG flags) override;
    HRESULT STDMETHODCALLTYPE DeleteMessages(ENTRYLIST* list, ULONG, IMAPIProgress*, ULONG flags) override;
    HRESULT STDMETHODCALLTYPE CreateFolder(ULONG type, LPTSTR name, LPTSTR comment, const IID* iid,
                                           ULONG flags, IMAPIFolder** folder) override;
    HRESULT STDMETHODCALLTYPE CopyFolder(ULONG size, ENTRYID* entryId, const IID* iid, void* target,
                                         LPTSTR newName, ULONG, IMAPIProgress*, ULONG flags) override;
    HRESULT STDMETHODCALLTYPE DeleteFolder(ULONG size, ENTRYID* entryId, ULONG, IMAPIProgress*,
                                           ULONG flags) override;
    HRESULT STDMETHODCALLTYPE SetReadFlags(ENTRYLIST* list, ULONG, IMAPIProgress*, ULONG flags) override;
    HRESULT STDMETHODCALLTYPE GetMessageStatus(ULONG, ENTRYID*, ULONG, ULONG*) override {
        return NotSupported(L"GetMessageStatus");
    }
    HRESULT STDMETHODCALLTYPE SetMessageStatus(ULONG, ENTRYID*, ULONG, ULONG, ULONG*) override {
        return NotSupported(L"SetMessageStatus");
    }
    HRESULT STDMETHODCALLTYPE SaveContentsSort(SSortOrderSet*, ULONG) override {
        return NotSupported(L"SaveContentsSort");
    }
    HRESULT STDMETHODCALLTYPE EmptyFolder(ULONG, IMAPIProgress*, ULONG flags) override;

    HRESULT CopySubobjects(PropertySide& target, const CopyFilter& filter) const override;
    HRESULT OpenObject(mailbox::PropertyTag tag, REFIID iid, ULONG flags, IUnknown** object) override;

protected:
    HRESULT Usable() const override;

private:
    /// A call that needs the folder to be open for writing.
    template <class Work>
    HRESULT Change(const wchar_t* member, Work&& work) {
        return Call(member, [&] {
            const HRESULT status = CheckWritable();
            return FAILED(status) ? status : work();
        });
    }
    template <class Work>
    HRESULT Change(const wchar_t* member, const Outputs&, Work&& work) {
        return Change(member, std::forward<Work>(work));
    }

    HRESULT CreateSubfolder(const std::wstring& name, const std::wstring& comment, bool openIfExists,
                            IMAPIFolder** folder);
    HRESULT FindSubfolder(ULONG size, const ENTRYID* entryId,
                          std::shared_ptr<mailbox::Folder>& subfolder) const;

    std::shared_ptr<mailbox::Folder> m_folder;
    bool m_storeIsWritable;
};

} // namespace standin::mapi
