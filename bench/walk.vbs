' Reads five fields of as many mails of the Inbox as its argument says, as a user of Outlook's object model would.
Set application = CreateObject("Outlook.Application")
Set session = application.GetNamespace("MAPI")
session.Logon "Outlook"
Set items = session.GetDefaultFolder(6).Items
count = CLng(WScript.Arguments(0))
begun = Timer
For i = 1 To count
    Set mail = items.Item(i)
    id = mail.EntryID
    subject = mail.Subject
    sender = mail.Sender.GetExchangeUser.PrimarySmtpAddress
    received = mail.ReceivedTime
    importance = mail.Importance
    body = mail.Body
Next
WScript.Echo count & " " & CLng((Timer - begun) * 1000)
