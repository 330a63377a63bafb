#pragma once

#include "vxtypes.h"

#include <QtCore/QPointer>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionFactory>

class QAction;
class QExtensionManager;
class TvxCustomLang;

/// The verbs of a translation component on a form in Designer (its context
/// menu; a double click runs the first): each opens the grid editor on one
/// table and writes the applied table back through the form window, so the
/// saved form holds it and Designer's undo takes it back.
class TvxTaskMenu : public QObject, public QDesignerTaskMenuExtension
{
    Q_OBJECT
    Q_INTERFACES(QDesignerTaskMenuExtension)
public:
    TvxTaskMenu(TvxCustomLang *component, QObject *parent);

    QAction *preferredEditAction() const override;
    QList<QAction *> taskActions() const override { return m_actions; }

    /// Runs the table verb @p index (0 to taskActions().size() - 2).
    void runVerb(int index);
    /// The last verb: the do-not-translate dialog; OK writes the new list
    /// into the form.
    void editDoNotTranslate();

private:
    static void reportError(TvxCustomLang *component, const QString &message);

    QPointer<TvxCustomLang> m_component;
    QList<QAction *> m_actions;
};

/// Gives every translation component its verbs.
class TvxTaskMenuFactory : public QExtensionFactory
{
    Q_OBJECT
public:
    explicit TvxTaskMenuFactory(QExtensionManager *parent);

protected:
    QObject *createExtension(QObject *object, const QString &iid, QObject *parent) const override;
};
