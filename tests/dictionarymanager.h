#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusConnectionInterface>
#include <QtTest/QTest>

#include <functional>

/// A dictionary manager program of its own for one test: its own database
/// and its own name on the session bus, so tests run side by side.
class DictionaryManager
{
public:
    /// A manager of the database @p file (empty: one of its own).
    explicit DictionaryManager(const QStringList &extra = {}, const QString &file = {})
        : m_database(file.isEmpty() ? m_dir.filePath(QStringLiteral("dictionary.sqlite")) : file)
        , m_name(QStringLiteral("org.vexil.test.dict%1n%2").arg(QCoreApplication::applicationPid()).arg(++s_count))
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        m_process.setProcessEnvironment(env);
        m_process.start(QStringLiteral(VEXIL_DICTIONARY_EXE),
                        QStringList{QStringLiteral("--database"), database(), QStringLiteral("--service-name"), m_name}
                            + extra);
        m_registered = waitFor([this] {
            return QDBusConnection::sessionBus().interface()->isServiceRegistered(m_name).value();
        }, 15000);
    }
    ~DictionaryManager()
    {
        m_process.terminate();
        if (!m_process.waitForFinished(5000))
            m_process.kill();
    }
    QString name() const { return m_name; }
    QString database() const { return m_database; }
    /// Whether the program is up and owns its name.
    bool running() const { return m_registered && m_process.state() == QProcess::Running; }

private:
    static bool waitFor(const std::function<bool()> &done, int ms)
    {
        QElapsedTimer t;
        t.start();
        while (!done() && t.elapsed() < ms)
            QTest::qWait(20);
        return done();
    }

    inline static int s_count = 0;
    QTemporaryDir m_dir;
    QString m_database;
    QString m_name;
    QProcess m_process;
    bool m_registered = false;
};
