#pragma once

// Forms and helpers the editor tests share: owner forms with a translation
// component, and answering the editors' question boxes.

#include "dialogdriver.h"
#include "vxcomp.h"

#include <QtCore/QFile>
#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

/// A form of three languages whose component is named Vexil1.
class TForm1 : public QWidget
{
    Q_OBJECT
public:
    TForm1()
    {
        setObjectName(QStringLiteral("Form1"));
        vx = new TVexil(this);
        vx->setObjectName(QStringLiteral("Vexil1"));
        vx->SetNumLang(3);
    }
    TVexil *vx;
};

/// A form with one button; the test puts its component on it.
class TOrders : public QWidget
{
    Q_OBJECT
public:
    TOrders()
    {
        setObjectName(QStringLiteral("Orders"));
        button = new QPushButton(QStringLiteral("Send"), this);
        button->setObjectName(QStringLiteral("btnSend"));
    }
    QPushButton *button;
};

inline QPushButton *buttonNamed(QWidget *dialog, const char *name)
{
    return dialog->findChild<QPushButton *>(QLatin1String(name));
}

inline QToolButton *tool(QWidget *form, const char *name)
{
    return form->findChild<QToolButton *>(QLatin1String(name));
}

/// Answers the next question box with the button @p name and notes its text.
inline void answer(const char *name, QString *message = nullptr)
{
    onNextModal([name, message](QWidget *box) {
        if (message) {
            if (auto *label = box->findChild<QLabel *>(QStringLiteral("Message")))
                *message = label->text();
        }
        QTest::mouseClick(buttonNamed(box, name), Qt::LeftButton);
    });
}

/// A file's bytes, or none when it cannot be read.
inline QByteArray contents(const QString &file)
{
    QFile f(file);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}
