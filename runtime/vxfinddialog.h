#pragma once

#include "vexil_export.h"
#include "vxdialog.h"

#include <QtWidgets/QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
Q_MOC_INCLUDE("vxcomp.h")

/// The suite's own Find dialog: a search text, whole-word and case options,
/// a direction, and Find Next. Modeless: Execute() shows it and find()
/// reports each search request. Its texts are translated like the other
/// localised dialogs'.
class VEXIL_EXPORT TvxFindDialog : public QDialog, public TvxLinkedDialog
{
    Q_OBJECT
    Q_PROPERTY(QString Vexil READ vexilName WRITE setVexil)
    Q_PROPERTY(QString FindText READ FindText WRITE SetFindText)
public:
    explicit TvxFindDialog(QWidget *parent = nullptr);

    QString FindText() const;
    void SetFindText(const QString &text);
    bool MatchCase() const;
    bool WholeWord() const;
    /// Searching downwards (the default) or upwards.
    bool Down() const;
    /// Shows the dialog; it stays open until closed.
    void Execute();

Q_SIGNALS:
    /// Find Next was pressed.
    void find();

protected:
    TvxFindDialog(QWidget *parent, const QStringList &keys);
    void addButton(QPushButton *button);

    QLineEdit *m_findEdit;
    QWidget *m_fields;

private:
    void build();

    QCheckBox *m_wholeWord;
    QCheckBox *m_matchCase;
    QRadioButton *m_up;
    QRadioButton *m_down;
    QWidget *m_buttons;
};

/// The suite's own Replace dialog: the Find dialog plus a replacement text
/// and Replace / Replace All.
class VEXIL_EXPORT TvxReplaceDialog : public TvxFindDialog
{
    Q_OBJECT
    Q_PROPERTY(QString ReplaceText READ ReplaceText WRITE SetReplaceText)
public:
    explicit TvxReplaceDialog(QWidget *parent = nullptr);

    QString ReplaceText() const;
    void SetReplaceText(const QString &text);

Q_SIGNALS:
    void replace();
    void replaceAll();

private:
    QLineEdit *m_replaceEdit;
};
