#pragma once

#include "vxdesignertools_export.h"
#include "vxtypes.h"

#include <QtCore/QPointer>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionFactory>

class QAction;
class QExtensionManager;
class TvxCustomLang;

namespace VexilDesigner {

/// The editor verbs of @p component, in menu order: the eleven common ones,
/// and for a TVexilTLV its list- and tree-view items after them.
VEXIL_DESIGNER_EXPORT QStringList editorVerbs(const TvxCustomLang *component);
/// The category name a verb opens the grid editor on.
VEXIL_DESIGNER_EXPORT QString editorVerbCategory(int index);
/// Whether @p component has the table verb @p index edits.
VEXIL_DESIGNER_EXPORT bool editorVerbEnabled(TvxCustomLang *component, int index);
/// Rebuilds the component's tables, opens the grid editor on the table of
/// verb @p index and, when the edit is applied, writes the table back
/// through the component's form window and applies the language. Returns
/// whether the edit was applied; errors are shown in a message box, never
/// thrown.
VEXIL_DESIGNER_EXPORT bool runEditorVerb(TvxCustomLang *component, int index);
/// Writes table @p property of @p component, now holding @p after, through
/// its form window: one undoable change from @p before, kept in the saved
/// form, the form marked dirty. Outside a form window the table just keeps
/// @p after.
VEXIL_DESIGNER_EXPORT void commitTable(TvxCustomLang *component, const QString &property, const QStringList &before,
                                       const QStringList &after);

} // namespace VexilDesigner

/// The verbs of a translation component on a form in Designer (its context
/// menu; a double click runs the first): each opens the grid editor on one
/// table and writes the applied table back through the form window, so the
/// saved form holds it and Designer's undo takes it back.
class VEXIL_DESIGNER_EXPORT TvxTaskMenu : public QObject, public QDesignerTaskMenuExtension
{
    Q_OBJECT
    Q_INTERFACES(QDesignerTaskMenuExtension)
public:
    TvxTaskMenu(TvxCustomLang *component, QObject *parent);

    QAction *preferredEditAction() const override;
    QList<QAction *> taskActions() const override { return m_actions; }

    /// Runs table verb @p index (0 to taskActions().size() - 2).
    void runVerb(int index);
    /// The last verb: the do-not-translate dialog; OK writes the new list
    /// into the form.
    void editDoNotTranslate();

private:
    QPointer<TvxCustomLang> m_component;
    QList<QAction *> m_actions;
};

/// Gives every translation component its verbs.
class VEXIL_DESIGNER_EXPORT TvxTaskMenuFactory : public QExtensionFactory
{
    Q_OBJECT
public:
    explicit TvxTaskMenuFactory(QExtensionManager *parent);

protected:
    QObject *createExtension(QObject *object, const QString &iid, QObject *parent) const override;
};
