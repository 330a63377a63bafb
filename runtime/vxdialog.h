#pragma once

#include "vexil_export.h"
#include "vxdialoglink.h"

#include <QtPrintSupport/QPageSetupDialog>
#include <QtPrintSupport/QPrintDialog>
#include <QtWidgets/QColorDialog>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFontDialog>

class TvxCustomLang;

// The localised common dialogs: Qt's own (non-native) dialogs whose labels
// and buttons are translated from the linked translation component's dialog
// texts each time they are shown. Vexil() is the link; it is cleared when
// the component is destroyed, and without it nothing is translated. Every
// dialog publishes the link as the property "Vexil": the component's object
// name, as form files store it, looked up when the dialog is shown.

/// What every localised dialog adds to its Qt dialog: the link.
class VEXIL_EXPORT TvxLinkedDialog
{
public:
    TvxCustomLang *Vexil() const { return m_link->vexil(); }
    void SetVexil(TvxCustomLang *vexil) { m_link->setVexil(vexil); }
    /// The linked component's object name.
    QString vexilName() const { return m_link->vexilName(); }
    /// Links the translation component of that object name (on the
    /// dialog's form first); form code generated from .ui files calls this.
    void setVexil(const QString &name) { m_link->setVexilName(name); }
    TvxDialogLink *link() const { return m_link; }

protected:
    TvxLinkedDialog(QWidget *dialog, const QStringList &keys);

private:
    TvxDialogLink *m_link;
};

/// A file dialog for opening files.
class VEXIL_EXPORT TvxOpenDialog : public QFileDialog, public TvxLinkedDialog
{
    Q_OBJECT
    Q_PROPERTY(QString Vexil READ vexilName WRITE setVexil)
public:
    explicit TvxOpenDialog(QWidget *parent = nullptr);

protected:
    TvxOpenDialog(QWidget *parent, const QStringList &keys, AcceptMode mode);
};

/// A file dialog for saving files.
class VEXIL_EXPORT TvxSaveDialog : public TvxOpenDialog
{
    Q_OBJECT
public:
    explicit TvxSaveDialog(QWidget *parent = nullptr);
};

/// A file dialog for opening pictures, with a preview label.
class VEXIL_EXPORT TvxOpenPictureDialog : public TvxOpenDialog
{
    Q_OBJECT
public:
    explicit TvxOpenPictureDialog(QWidget *parent = nullptr);
};

/// A file dialog for saving pictures.
class VEXIL_EXPORT TvxSavePictureDialog : public TvxOpenDialog
{
    Q_OBJECT
public:
    explicit TvxSavePictureDialog(QWidget *parent = nullptr);
};

/// A colour dialog.
class VEXIL_EXPORT TvxColorDialog : public QColorDialog, public TvxLinkedDialog
{
    Q_OBJECT
    Q_PROPERTY(QString Vexil READ vexilName WRITE setVexil)
public:
    explicit TvxColorDialog(QWidget *parent = nullptr);
};

/// A font dialog.
class VEXIL_EXPORT TvxFontDialog : public QFontDialog, public TvxLinkedDialog
{
    Q_OBJECT
    Q_PROPERTY(QString Vexil READ vexilName WRITE setVexil)
public:
    explicit TvxFontDialog(QWidget *parent = nullptr);
};

/// A page and printer set-up dialog.
class VEXIL_EXPORT TvxPrinterSetupDialog : public QPageSetupDialog, public TvxLinkedDialog
{
    Q_OBJECT
    Q_PROPERTY(QString Vexil READ vexilName WRITE setVexil)
public:
    explicit TvxPrinterSetupDialog(QWidget *parent = nullptr);
};

/// A print dialog.
class VEXIL_EXPORT TvxPrintDialog : public QPrintDialog, public TvxLinkedDialog
{
    Q_OBJECT
    Q_PROPERTY(QString Vexil READ vexilName WRITE setVexil)
public:
    explicit TvxPrintDialog(QWidget *parent = nullptr);
};

