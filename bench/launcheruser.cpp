// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

// Plays the launcher's user inside the measured process, by the names of the forms: each line of standard
// input is one action, and "done" is printed after it. It never waits, so it adds nothing to a pause.

#include "launchertasks.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSocketNotifier>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTimer>

#include <cstdio>

#include <unistd.h>

namespace {

/// Finds a part of the window, or of the widget `within` of it.
template <typename Type>
Type *find(const QString &name, const QString &within = QString())
{
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        if (!within.isEmpty() && !(window = window->findChild<QWidget *>(within)))
            continue;
        if (auto *found = window->findChild<Type *>(name))
            return found;
    }
    qFatal("there is no %s %s", qPrintable(within), qPrintable(name));
}

/// An error message would keep the following actions from doing anything.
void refuseDialogs()
{
    const QWidget *dialog = QApplication::activeModalWidget();
    if (!dialog)
        return;
    QStringList texts;
    for (const QLabel *label : dialog->findChildren<QLabel *>())
        texts += label->text();
    qFatal("a dialog is open: %s", qPrintable(texts.join(QLatin1Char(' '))));
}

/// After the action's reply: a button may open a dialog that stays.
void pressLater(const QString &name)
{
    auto *button = find<QAbstractButton>(name);
    if (!button->isEnabled())
        qFatal("%s is disabled", qPrintable(name));
    QTimer::singleShot(0, button, &QAbstractButton::click);
}

void showPage(int row)
{
    auto *list = find<QListWidget>(QStringLiteral("settingsListWidget"));
    if (row < list->count() && !list->item(row)->isHidden())
        list->setCurrentRow(row);
}

/// Gives an editor another value, as its user would.
void change(const QString &page, const QString &name)
{
    auto *widget = find<QWidget>(name, page);
    const auto *stack = find<QStackedWidget>(QStringLiteral("settingsStackedWidget"));
    for (int row = 0; row < stack->count(); ++row) {
        if (stack->widget(row)->isAncestorOf(widget))
            showPage(row);
    }
    if (!widget->isVisible() || !widget->isEnabled())
        qFatal("%s cannot be edited", qPrintable(name));
    if (auto *button = qobject_cast<QAbstractButton *>(widget))
        button->click();
    else if (auto *box = qobject_cast<QComboBox *>(widget))
        box->setCurrentIndex((box->currentIndex() + 1) % std::max(box->count(), 1));
    else if (auto *number = qobject_cast<QSpinBox *>(widget))
        number->stepUp();
    else if (auto *line = qobject_cast<QLineEdit *>(widget))
        line->setText(line->text() + QLatin1Char('1'));
    else if (auto *view = qobject_cast<QAbstractItemView *>(widget))
        view->setCurrentIndex(view->model()->index(0, 0));
}

void act(const QStringList &words)
{
    refuseDialogs();
    const QString action = words.value(0);
    if (action == QLatin1String("press"))
        pressLater(words.value(1));
    else if (action == QLatin1String("show"))
        showPage(words.value(1).toInt());
    else if (action == QLatin1String("change"))
        change(words.value(1), words.value(2));
    else if (action == QLatin1String("pause"))
        ::usleep(words.value(1).toUInt() * 1000); // for the check of the measurement itself
    else
        QCoreApplication::exit();
    std::puts("done");
    std::fflush(stdout);
}

void readActions()
{
    static QByteArray input;
    char buffer[1024];
    const ssize_t size = ::read(STDIN_FILENO, buffer, sizeof buffer);
    if (size <= 0)
        return QCoreApplication::exit();
    input.append(buffer, static_cast<int>(size));
    for (int end = input.indexOf('\n'); end >= 0; end = input.indexOf('\n')) {
        const QString line = QString::fromLatin1(input.left(end));
        input.remove(0, end + 1);
        act(line.split(QLatin1Char(' ')));
    }
}

} // namespace

void Bench::playUser()
{
    auto *notifier = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, &readActions);
}
