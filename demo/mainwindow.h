#pragma once

#include "ui_mainwindow.h"

class SecondWindow;
class TVexilDispatcher;

/// The demo's main window: a customer record form whose every text follows
/// the language chosen in the Language menu.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    /// @p translations is the translation file both windows load at start.
    explicit MainWindow(const QString &translations, QWidget *parent = nullptr);
    ~MainWindow() override;

    TVexilDispatcher *dispatcher() const { return m_dispatcher; }
    TVexil *vexil() const { return ui.vexil; }
    SecondWindow *secondWindow() const { return m_second; }
    /// Switches both windows to language @p number (from 1).
    void setLanguage(int number);
    /// The exit confirmation, built but not shown.
    QDialog *createExitConfirmation() const;
    /// Whether closing asks first (the screenshot mode does not).
    void setConfirmExit(bool on) { m_confirmExit = on; }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void buildLanguageMenu();
    void languageChanged();
    void saveTranslations();
    void openFile();
    void editTranslations();

    Ui::MainWindow ui;
    TVexilDispatcher *m_dispatcher;
    SecondWindow *m_second;
    QString m_translations;
    QActionGroup *m_languages = nullptr;
    bool m_confirmExit = true;
};
