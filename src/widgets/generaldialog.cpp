// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "widgets/generaldialog.h"

#include "ui_generaldialog.h"

#include <QLayout>
#include <QPushButton>
#include <QScreen>
#include <QShowEvent>

namespace {

constexpr int dialogWidth = 400;
constexpr int longestMessage = 600;
constexpr int mostLines = 12;
constexpr int widestMessageWord = 350;
constexpr int widestTitleWord = 290;

QString imageOf(GeneralDialog::DialogMode mode)
{
    switch (mode) {
    case GeneralDialog::Error:
        return QStringLiteral(":/images/dialog_error.png");
    case GeneralDialog::Question:
    case GeneralDialog::Overwrite:
    case GeneralDialog::OverwriteSeries:
        return QStringLiteral(":/images/dialog_question.png");
    case GeneralDialog::Password:
        return QStringLiteral(":/images/dialog_password.png");
    case GeneralDialog::Prompt:
    case GeneralDialog::Input:
    case GeneralDialog::BareInput:
        break;
    }
    return QStringLiteral(":/images/dialog_input.png");
}

bool endsLine(QChar character)
{
    return character == QLatin1Char('\n') || character == QChar::LineSeparator
        || character == QChar::ParagraphSeparator;
}

/// A label wraps only between words, so words wider than a line get zero-width spaces. Text that would not
/// fit on a screen is cut.
QString breakable(const QString &text, const QLabel *label, int widestWord)
{
    label->ensurePolished();
    const QFontMetrics metrics = label->fontMetrics();
    QString result;
    int lines = 1;
    int width = 0;
    for (const QChar character : text) {
        lines += endsLine(character) ? 1 : 0;
        if (result.size() >= longestMessage || lines > mostLines)
            return result + QChar(0x2026);
        const int advance = metrics.horizontalAdvance(character);
        width = character.isSpace() ? 0 : width + advance;
        if (width > widestWord && !character.isLowSurrogate()) {
            result += QChar(0x200B);
            width = advance;
        }
        result += character;
    }
    return result;
}

} // namespace

GeneralDialog::GeneralDialog(QWidget *parent, DialogMode mode)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
    , m_ui(std::make_unique<Ui::GeneralDialog>())
{
    m_ui->setupUi(this);
    setFixedWidth(dialogWidth);
    setWindowModality(Qt::ApplicationModal);
    m_ui->messageLabel->setContentsMargins(10, 0, 10, 0);
    m_ui->inputLineEdit->setAccessibleName(tr("Input"));
    m_ui->image->setPixmap(QPixmap(imageOf(mode)));
    showParts(mode);
    addButtons(mode);
}

GeneralDialog::~GeneralDialog() = default;

void GeneralDialog::showParts(DialogMode mode)
{
    const bool input = mode == Prompt || mode == Input || mode == BareInput || mode == Password;
    m_ui->inputLineEdit->setVisible(input);
    m_ui->rememberCheckBox->setVisible(mode == OverwriteSeries);
    m_ui->messageLabel->setVisible(mode != BareInput);
    if (mode == Password)
        setPasswordMode();
    if (input)
        m_ui->inputLineEdit->setFocus();
}

void GeneralDialog::addButtons(DialogMode mode)
{
    QPushButton *accept = m_ui->buttonBox->button(QDialogButtonBox::Ok);
    accept->setText(tr("OK"));
    if (mode == Input || mode == BareInput || mode == Password)
        accept->setText(tr("Add"));
    else if (mode == Overwrite || mode == OverwriteSeries)
        accept->setText(tr("Overwrite"));
    if (mode == OverwriteSeries)
        m_ui->buttonBox->addButton(tr("Skip"), QDialogButtonBox::RejectRole);
    else if (mode != Error)
        m_ui->buttonBox->addButton(tr("Cancel"), QDialogButtonBox::RejectRole);
    accept->setDefault(true);
    if (!m_ui->inputLineEdit->isVisibleTo(this))
        accept->setFocus();
}

void GeneralDialog::setTitle(const QString &title)
{
    setWindowTitle(title);
    m_ui->titleLabel->setText(breakable(title, m_ui->titleLabel, widestTitleWord));
}

void GeneralDialog::setMessage(const QString &message)
{
    m_ui->messageLabel->setText(breakable(message, m_ui->messageLabel, widestMessageWord));
    m_ui->inputLineEdit->setAccessibleDescription(message);
}

void GeneralDialog::setTitleVisible(bool visible)
{
    m_ui->titleWidget->setVisible(visible);
}

void GeneralDialog::setPasswordMode()
{
    m_ui->inputLineEdit->setEchoMode(QLineEdit::Password);
}

void GeneralDialog::setInput(const QString &input)
{
    m_ui->inputLineEdit->setText(input);
    m_ui->inputLineEdit->selectAll();
}

QString GeneralDialog::getInput() const
{
    return m_ui->inputLineEdit->text();
}

bool GeneralDialog::checked() const
{
    return m_ui->rememberCheckBox->isChecked();
}

bool GeneralDialog::added() const
{
    return m_added;
}

void GeneralDialog::showEvent(QShowEvent *event)
{
    // Qt has chosen the height for the width that the text would like to have.
    if (!event->spontaneous())
        resize(width(),
               qMin(layout()->totalHeightForWidth(width()), screen()->availableGeometry().height() * 9 / 10));
    QDialog::showEvent(event);
    // Without a window manager, the window itself must take the keyboard focus and give it back.
    activateWindow();
}

void GeneralDialog::hideEvent(QHideEvent *event)
{
    QDialog::hideEvent(event);
    if (parentWidget() && parentWidget()->window()->isVisible())
        parentWidget()->window()->activateWindow();
}

void GeneralDialog::on_buttonBox_clicked(QAbstractButton *button)
{
    m_added = button->text() == tr("Add");
}

void GeneralDialog::showError(QWidget *parent, const QString &title, const QString &message)
{
    ask(parent, title, message, Error);
}

bool GeneralDialog::ask(QWidget *parent, const QString &title, const QString &message, DialogMode mode)
{
    GeneralDialog dialog(parent, mode);
    dialog.setTitle(title);
    dialog.setMessage(message);
    return dialog.exec() == QDialog::Accepted;
}
