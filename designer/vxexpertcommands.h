#pragma once

#include "vxdesignertools_export.h"

#include "vxproject.h"
#include "vxscandriver.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>

class QDesignerFormWindowInterface;
class QMenuBar;
class TvxCustomLang;
class TvxProgressWindow;

/// What the expert's commands need from the main window and its project.
class VEXIL_DESIGNER_EXPORT TvxExpertProject
{
public:
    virtual ~TvxExpertProject() = default;
    /// The window dialogs and messages belong to.
    virtual QWidget *window() const = 0;
    /// Names of the forms selected in the form list.
    virtual QStringList selectedForms() const = 0;
    /// The form named @p name (an empty name when there is none).
    virtual TvxProjectForm form(const QString &name) const = 0;
    /// Names of the project's forms that have a translation component.
    virtual QStringList formsWithComponent() const = 0;
    /// The project's unit files (.cpp and .h).
    virtual QStringList units() const = 0;
    /// The Designer form window the form is open in, or none.
    virtual QDesignerFormWindowInterface *openFormWindow(const QString &name) const = 0;
    /// Puts a translation component on the form; false when it could not.
    virtual bool insertComponent(const QString &formName) = 0;
    /// Reads the form list again after a command.
    virtual void refresh() = 0;
};

/// The expert's scan and maintenance commands on a project.
class VEXIL_DESIGNER_EXPORT TvxExpertCommands : public QObject
{
    Q_OBJECT
public:
    explicit TvxExpertCommands(TvxExpertProject *project, QObject *parent = nullptr);
    ~TvxExpertCommands() override;

    /// "&Source" / "&With form...": each selected form's own unit.
    void Translatesource1Click();
    /// "&Source" / "W&ithout form...": a unit picked with a form.
    void TranslateUnit1Click();
    /// "&Const section" / "With &Form...".
    void Const1Click();
    /// "&Const section" / "With&out Form...".
    void WithoutForm1Click();
    /// "&Tools" / "&Check unused IDs".
    void CheckunusedIDs1Click();
    /// "&Tools" / "Change &TVexil type" / item @p index (0 to 4).
    void ToTVexil1Click(int index);

    /// DoScanReplace on form @p formName; @p unitFile empty for its own unit.
    Vexil::Expert::TvxScanOutcome DoScanReplace(const QString &formName, const QString &unitFile, bool constSection);

    /// The translation component of form @p formName: its name, class,
    /// Strings table and delimiter, from Designer when the form is open
    /// there, from the .ui file otherwise. False when it has none.
    struct Component
    {
        QString name, className;
        QStringList strings;
        QChar delimiter = QLatin1Char('\t');
        TvxCustomLang *live = nullptr;
    };
    bool componentOf(const QString &formName, Component *component) const;

    /// Adds @p entries to the form's Strings: through the form window's
    /// cursor when it is open in Designer (undoable, saved with the form),
    /// into the .ui file otherwise.
    bool addStrings(const QString &formName, const Vexil::Expert::TvxStringEntries &entries);

    TvxProgressWindow *progressWindow() const { return m_progress; }

private:
    void message(Vexil::Expert::TvxMessageKind kind, const QString &text);
    bool pickUnit(QString *form, QString *unit);
    /// Each selected form's own unit, a component inserted where it has none.
    void scanSelectedForms(bool constSection);
    template <class F>
    void guarded(F &&command);

    TvxExpertProject *m_project;
    QPointer<TvxProgressWindow> m_progress;
};

/// Adds the expert's "&Source", "&Const section" and "&Tools" menus to
/// @p bar, wired to @p commands.
VEXIL_DESIGNER_EXPORT void buildExpertMenus(QMenuBar *bar, TvxExpertCommands *commands);
