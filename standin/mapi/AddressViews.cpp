// What the address book holds: IABContainer, IMailUser, IDistList.
#include "standin/mapi/AddressContainer.h"
#include "standin/mapi/AddressLists.h"
#include "standin/mapi/FixedProperties.h"
#include "standin/mapi/Views.h"

namespace standin::mapi {
namespace {

using mailbox::AddressBook;
using mailbox::AddressEntry;

/// The global address list.
class AddressListView final : public AddressContainer<IABContainer> {
public:
    explicit AddressListView(AddressBook& book)
        : AddressContainer(book, std::make_shared<FixedProperties>(ListProperties(book), book.Names())) {}

protected:
    std::unique_ptr<TableRows> Contents() const override { return AddressRows(Book().Entries()); }
    std::unique_ptr<TableRows> Lists() const override { return nullptr; }
    bool Resolves() const override { return true; }
};

/// The container of the lists, in which there are no addresses.
class AddressRootView final : public AddressContainer<IABContainer> {
public:
    explicit AddressRootView(AddressBook& book)
        : AddressContainer(book, std::make_shared<FixedProperties>(RootProperties(), book.Names())) {}

protected:
    std::unique_ptr<TableRows> Contents() const override { return nullptr; }
    std::unique_ptr<TableRows> Lists() const override {
        return FixedRows({ListProperties(Book())}, Book().Names());
    }
    bool Resolves() const override { return false; }
};

class DistributionListView final : public AddressContainer<IDistList> {
public:
    DistributionListView(AddressBook& book, std::shared_ptr<AddressEntry> list)
        : AddressContainer(book, list), m_list(std::move(list)) {}

protected:
    std::unique_ptr<TableRows> Contents() const override { return AddressRows(m_list->Members()); }
    std::unique_ptr<TableRows> Lists() const override { return nullptr; }
    bool Resolves() const override { return false; }

private:
    std::shared_ptr<AddressEntry> m_list;
};

class MailUserView final : public DirectObject<IMailUser> {
public:
    explicit MailUserView(std::shared_ptr<AddressEntry> user) : DirectObject(std::move(user), false) {}
};

} // namespace

IMAPIProp* MakeAddressEntry(AddressBook& book, std::shared_ptr<AddressEntry> entry) {
    if (entry->IsDistributionList())
        return new DistributionListView(book, std::move(entry));
    return new MailUserView(std::move(entry));
}

IABContainer* MakeAddressList(AddressBook& book) {
    return new AddressListView(book);
}

IABContainer* MakeAddressRoot(AddressBook& book) {
    return new AddressRootView(book);
}

} // namespace standin::mapi
