#pragma once

#include "vxcomp.h"

#include <QtCore/QPointer>

/// A translation component that takes its dialog texts and locale settings
/// from a shared container component instead of holding its own.
class VEXIL_EXPORT TVexilLinked : public TVexil
{
    Q_OBJECT
    // The container's tables stand in for these two: not stored with the form.
    Q_PROPERTY(QStringList DlgsCaptions READ dlgsCaptionLines WRITE setDlgsCaptions DESIGNABLE false STORED false)
    Q_PROPERTY(QStringList Locales READ localeLines WRITE setLocales DESIGNABLE false STORED false)
    Q_PROPERTY(QString CommonContainer READ commonContainerName WRITE setCommonContainerName)
public:
    explicit TVexilLinked(QObject *owner = nullptr) : TVexil(owner) {}
    explicit TVexilLinked(QWidget *parent) : TVexil(parent) {}

    TvxCustomLang *CommonContainer() const { return m_container; }
    /// Takes @p container's dialog texts and locale settings at once (a
    /// copy: the container's later changes are not followed). Ignored for
    /// the current container and for this component itself.
    void SetCommonContainer(TvxCustomLang *container);

    /// The container's object name, as form files store the link.
    QString commonContainerName() const;
    /// Links to the container of that object name, looked for again when
    /// loading ends if it is not built yet.
    void setCommonContainerName(const QString &name);
    /// The name form code generated from .ui files calls.
    void setCommonContainer(const QString &name) { setCommonContainerName(name); }

    TvxStringList *GetPropListByType(TStringsType type) const override;

protected:
    void afterLoaded() override;

private:
    void takeContainerTables();

    QPointer<TvxCustomLang> m_container;
    QString m_containerName; // named by a form file, not found yet
};
