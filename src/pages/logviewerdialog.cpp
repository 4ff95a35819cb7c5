// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/logviewerdialog.h"

#include "config/jsonmodule.h"
#include "device/usbsticks.h"
#include "pages/logfiltermodel.h"
#include "pages/logmodel.h"
#include "widgets/generaldialog.h"

#include "ui_logviewerdialog.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFutureWatcher>
#include <QScrollBar>
#include <QtConcurrent>

#include <algorithm>

namespace {

constexpr int refreshMs = 250;
constexpr int rowHeight = 24;
constexpr int timeWidth = 200;
constexpr int severityWidth = 80;
constexpr int categoryWidth = 180;

} // namespace

LogViewerDialog::LogViewerDialog(const LogRing &ring, const JsonModule &configuration, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
    , m_ui(std::make_unique<Ui::LogViewerDialog>())
    , m_ring(ring)
    , m_configuration(configuration)
    , m_model(new LogModel(ring, this))
    , m_filtered(new LogFilterModel(this))
{
    m_ui->setupUi(this);
    m_model->refresh();
    m_filtered->setSourceModel(m_model);
    setUpFilter();
    setUpTable();
    setUpFollowing();
    setUpButtons();
    updateCount();
    connect(&m_refreshTimer, &QTimer::timeout, this, &LogViewerDialog::refresh);
    m_refreshTimer.start(refreshMs);
}

LogViewerDialog::~LogViewerDialog() = default;

void LogViewerDialog::setUpFilter()
{
    const auto add = [this](const QString &text, LogSeverity least) {
        m_ui->severityComboBox->addItem(text, static_cast<int>(least));
    };
    add(tr("All messages"), LogSeverity::Debug);
    add(tr("No debug messages"), LogSeverity::Information);
    add(tr("Warnings and errors"), LogSeverity::Warning);
    add(tr("Errors"), LogSeverity::Critical);
    connect(m_ui->filterLineEdit, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_filtered->setText(text);
        updateCount();
    });
    connect(m_ui->severityComboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this] {
        m_filtered->setMinimumSeverity(
            static_cast<LogSeverity>(m_ui->severityComboBox->currentData().toInt()));
        updateCount();
    });
}

void LogViewerDialog::setUpTable()
{
    QTableView *table = m_ui->logTableView;
    table->setModel(m_filtered);
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(rowHeight);
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setStretchLastSection(true);
    table->setColumnWidth(LogModel::Time, timeWidth);
    table->setColumnWidth(LogModel::Severity, severityWidth);
    table->setColumnWidth(LogModel::Category, categoryWidth);
    connect(table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &LogViewerDialog::showCurrentLine);
    auto *copy = new QAction(this);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    table->addAction(copy);
    connect(copy, &QAction::triggered, this, &LogViewerDialog::copySelection);
}

void LogViewerDialog::setUpFollowing()
{
    QScrollBar *bar = m_ui->logTableView->verticalScrollBar();
    QCheckBox *follow = m_ui->followCheckBox;
    const auto toEnd = [bar, follow] {
        if (follow->isChecked())
            bar->setValue(bar->maximum());
    };
    connect(bar, &QScrollBar::rangeChanged, this, toEnd);
    connect(follow, &QCheckBox::toggled, this, toEnd);
    connect(bar, &QScrollBar::valueChanged, this, [bar, follow](int value) {
        if (value < bar->maximum())
            follow->setChecked(false);
    });
    connect(m_filtered, &LogFilterModel::rowsRemoved, this, [this](const QModelIndex &, int first, int last) {
        if (first == 0)
            keepScrollPosition(last + 1);
    });
}

void LogViewerDialog::setUpButtons()
{
    connect(m_ui->copyButton, &QPushButton::clicked, this, &LogViewerDialog::copySelection);
    connect(m_ui->saveButton, &QPushButton::clicked, this, &LogViewerDialog::saveArchive);
    connect(m_ui->closeButton, &QPushButton::clicked, this, &LogViewerDialog::reject);
}

void LogViewerDialog::refresh()
{
    // Removing the current line would make the view scroll to the next one.
    m_ui->logTableView->setAutoScroll(false);
    m_model->refresh();
    m_ui->logTableView->setAutoScroll(true);
    updateCount();
}

void LogViewerDialog::updateCount()
{
    m_ui->countLabel->setText(tr("%1 of %2 lines").arg(m_filtered->rowCount()).arg(m_model->rowCount()));
}

void LogViewerDialog::keepScrollPosition(int removedRows)
{
    QScrollBar *bar = m_ui->logTableView->verticalScrollBar();
    if (!m_ui->followCheckBox->isChecked())
        bar->setValue(bar->value() - removedRows);
}

void LogViewerDialog::copySelection()
{
    QModelIndexList rows = m_ui->logTableView->selectionModel()->selectedRows();
    if (rows.isEmpty()) {
        showStatus(tr("Select the lines to copy."));
        return;
    }
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const QModelIndex &index : qAsConst(rows))
        lines += m_filtered->entry(index.row()).line();
    QApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
    showStatus(tr("Copied %n line(s).", nullptr, lines.size()));
}

void LogViewerDialog::showCurrentLine()
{
    const QModelIndex current = m_ui->logTableView->currentIndex();
    m_ui->lineTextEdit->setPlainText(current.isValid() ? m_filtered->entry(current.row()).text : QString());
}

void LogViewerDialog::saveArchive()
{
    const QVector<UsbStick> sticks = UsbSticks::mounted();
    const QString title = tr("Save to USB stick");
    if (sticks.isEmpty()) {
        GeneralDialog::showError(this, title, tr("No USB stick was found. Plug one in and try again."));
        return;
    }
    const UsbStick &stick = sticks.first();
    if (!stick.writable) {
        GeneralDialog::showError(this, title, tr("The USB stick \"%1\" is write-protected.").arg(stick.name));
        return;
    }
    writeArchive(stick.path, stick.name);
}

void LogViewerDialog::writeArchive(const QString &folder, const QString &stick)
{
    showStatus(tr("Saving..."));
    m_ui->saveButton->setEnabled(false);
    JsonModule document(m_configuration.filePath(), false);
    document.readContent();
    auto *saving = new QFutureWatcher<SupportArchive::Result>(this);
    connect(saving, &QFutureWatcherBase::finished, this, [this, saving, stick] {
        saving->deleteLater();
        m_ui->saveButton->setEnabled(true);
        showSaved(saving->result(), stick);
    });
    saving->setFuture(QtConcurrent::run(SupportArchive::save, folder, m_ring.since(0).entries,
                                        document.getDocument().object()));
}

void LogViewerDialog::showSaved(const SupportArchive::Result &result, const QString &stick)
{
    showStatus(result.error.isEmpty() ? tr("Saved on USB stick \"%1\" as %2.").arg(stick, result.fileName)
                                      : QString());
    if (!result.error.isEmpty())
        GeneralDialog::showError(this, tr("Save to USB stick"), result.error);
}

void LogViewerDialog::showStatus(const QString &text)
{
    m_ui->statusLabel->setText(text);
    QAccessibleEvent said(m_ui->statusLabel, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}
