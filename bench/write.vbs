' Makes as many contacts of twenty fields each as its argument says, as a user of Outlook's object model would.
Set application = CreateObject("Outlook.Application")
Set session = application.GetNamespace("MAPI")
session.Logon "Outlook"
count = CLng(WScript.Arguments(0))
begun = Timer
For i = 1 To count
    Set contact = session.GetDefaultFolder(10).Items.Add(2)
    contact.FirstName = "Some text"
    contact.LastName = "Some text"
    contact.CompanyName = "Some text"
    contact.Department = "Some text"
    contact.JobTitle = "Some text"
    contact.BusinessAddressStreet = "Some text"
    contact.BusinessAddressCity = "Some text"
    contact.BusinessAddressState = "Some text"
    contact.BusinessAddressPostalCode = "Some text"
    contact.BusinessTelephoneNumber = "Some text"
    contact.HomeTelephoneNumber = "Some text"
    contact.MobileTelephoneNumber = "Some text"
    contact.PagerNumber = "Some text"
    contact.AssistantName = "Some text"
    contact.Spouse = "Some text"
    contact.NickName = "Some text"
    contact.Profession = "Some text"
    contact.ManagerName = "Some text"
    contact.OfficeLocation = "Some text"
    contact.WebPage = "Some text"
    contact.Save
    id = contact.EntryID
Next
WScript.Echo count & " " & CLng((Timer - begun) * 1000)
