#pragma once

#include "vxdictstore.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QTimer>
#include <QtWidgets/QMainWindow>

class QAction;
class QLabel;
class QLineEdit;
class QListWidget;
class QTableView;

/// The dictionary's units as a table: one row per unit, one column per
/// language. Edits go straight to the store.
class TvxDictUnitModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit TvxDictUnitModel(TvxDictionaryStore *store, QObject *parent = nullptr);

    /// Reads the languages and the units matching the filter again.
    void refresh();
    void setFilter(const QString &filter);
    QString filter() const { return m_filter; }
    qint64 unitId(int row) const { return m_units.value(row).id; }
    /// Deletes the units of @p rows from the store and the table.
    void deleteRows(QList<int> rows);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

signals:
    /// A change was refused; @p message says why.
    void failed(const QString &message);
    /// The dictionary was changed from the table.
    void edited();

private:
    TvxDictionaryStore *m_store;
    QString m_filter;
    QStringList m_languages;
    QVector<TvxDictionaryStore::Unit> m_units;
};

/// The dictionary manager's window: its languages, its units with a search
/// box, editing in place, deleting, TMX import and export, and the number of
/// units in the status bar. Closing it by the user saves what is pending
/// and emits `closedByUser`.
class TfrmDictionary : public QMainWindow
{
    Q_OBJECT

public:
    explicit TfrmDictionary(TvxDictionaryStore *store, QWidget *parent = nullptr);

    TvxDictUnitModel *model() const { return m_model; }

public slots:
    /// Reads the store again (at once when shown, else when next shown).
    void refresh();
    /// Notes that the store changed elsewhere; the window follows shortly.
    void storeChanged();
    void importTmx();
    void exportTmx();
    void deleteSelected();
    void addLanguage();
    bool save();

signals:
    void closedByUser();

protected:
    void closeEvent(QCloseEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    TvxDictionaryStore *m_store;
    TvxDictUnitModel *m_model;
    QListWidget *lbLanguages;
    QLineEdit *edSearch;
    QTableView *tvUnits;
    QLabel *lbCount;
    QAction *actSave, *actImport, *actExport, *actDelete, *actAddLanguage;
    QString m_folder;  // where the last TMX file was taken from or put
    QTimer m_refreshTimer;
    bool m_stale = true;

    void showError(const QString &message);
    void updateStatus();
    void updateActions();
};
