// MAPI32.dll has no code: its exports, in MAPI32.def, lead to VardenOutlook.dll.
