#pragma once

#include "vxcomp.h"

/// A translation component whose translations live in a storage file that
/// the application's end users edit with the run-time translation editor.
class VEXIL_EXPORT TVexilRT : public TVexil
{
    Q_OBJECT
    Q_PROPERTY(bool LoadOnCreate READ LoadOnCreate WRITE setLoadOnCreate)
    Q_PROPERTY(QString StorageFile READ StorageFile WRITE setStorageFile)
    Q_PROPERTY(QChar StorageDelimiter READ StorageDelimiter WRITE setStorageDelimiter)
public:
    explicit TVexilRT(QObject *owner = nullptr) : TVexil(owner) {}
    explicit TVexilRT(QWidget *parent) : TVexil(parent) {}

    /// Whether the storage file is loaded when the form has been built.
    bool LoadOnCreate() const { return m_loadOnCreate; }
    void setLoadOnCreate(bool on) { m_loadOnCreate = on; }
    QString StorageFile() const { return m_storageFile; }
    void setStorageFile(const QString &file) { m_storageFile = file; }
    /// The delimiter between the texts in the storage file; a backquote by default.
    QChar StorageDelimiter() const { return m_storageDelimiter; }
    void setStorageDelimiter(QChar delim) { m_storageDelimiter = delim; }

    /// Opens the run-time translation editor on the table of @p category.
    /// After Apply the tables are saved to the storage file and true is
    /// returned.
    bool EditProperty(TStringsType category);

protected:
    void afterLoaded() override;

private:
    bool m_loadOnCreate = false;
    QString m_storageFile;
    QChar m_storageDelimiter = QLatin1Char('`');
};
