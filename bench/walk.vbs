' Reads five fields of every mail in the Inbox, as a user of Outlook's object model would.
Set application = CreateObject("Outlook.Application")
Set session = application.GetNamespace("MAPI")
session.Logon "Outlook"
Set items = session.GetDefaultFolder(6).Items
begun = Timer
For i = 1 To items.Count
    Set mail = items.Item(i)
    id = mail.EntryID
    subject = mail.Subject
    sender = mail.Sender.GetExchangeUser.PrimarySmtpAddress
    received = mail.ReceivedTime
    importance = mail.Importance
    body = mail.Body
Next
WScript.Echo items.Count & " " & CLng((Timer - begun) * 1000)
