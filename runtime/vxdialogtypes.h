#pragma once

#include <QtCore/QFlags>

/// The kind of a message box; it chooses the title and the icon.
enum TMsgDlgType { mtWarning, mtError, mtInformation, mtConfirmation, mtCustom };

/// The buttons a message box can carry, in the order they are shown.
enum TMsgDlgBtn {
    mbYes = 0x1,
    mbNo = 0x2,
    mbOK = 0x4,
    mbCancel = 0x8,
    mbAbort = 0x10,
    mbRetry = 0x20,
    mbIgnore = 0x40,
    mbAll = 0x80,
    mbNoToAll = 0x100,
    mbYesToAll = 0x200,
    mbHelp = 0x400
};
Q_DECLARE_FLAGS(TMsgDlgButtons, TMsgDlgBtn)
Q_DECLARE_OPERATORS_FOR_FLAGS(TMsgDlgButtons)

/// The result of a modal dialog: which button closed it.
enum TModalResult {
    mrNone = 0,
    mrOk = 1,
    mrCancel = 2,
    mrAbort = 3,
    mrRetry = 4,
    mrIgnore = 5,
    mrYes = 6,
    mrNo = 7,
    mrAll = 8,
    mrNoToAll = 9,
    mrYesToAll = 10
};
