// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDialog>

#include <memory>

class QAbstractButton;

namespace Ui {
class GeneralDialog;
}

/// The message, question and input box of the program. `exec()` returns 1 if it was accepted.
class GeneralDialog : public QDialog
{
    Q_OBJECT

public:
    enum DialogMode {
        Prompt = 1,
        Error = 2,
        Question = 3,
        Input = 4,
        Overwrite = 5,
        OverwriteSeries = 6, ///< with "Skip", and a check box for all that follow
        BareInput = 7,       ///< an input line without a message
        Password = 8
    };

    GeneralDialog(QWidget *parent, DialogMode mode);
    ~GeneralDialog() override;

    void setTitle(const QString &title);
    /// Plain text. Long words are wrapped and very long texts are cut, so that the box fits on the screen.
    void setMessage(const QString &message);
    void setTitleVisible(bool visible);
    void setPasswordMode();
    /// The initial input, selected so that typing replaces it.
    void setInput(const QString &input);
    QString getInput() const;
    bool checked() const;
    /// Whether the "Add" button closed the box.
    bool added() const;

    /// Shows an error until the user confirms it.
    static void showError(QWidget *parent, const QString &title, const QString &message);
    /// Asks a question; true if the user accepts.
    static bool ask(QWidget *parent, const QString &title, const QString &message,
                    DialogMode mode = Question);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private slots:
    void on_buttonBox_clicked(QAbstractButton *button);

private:
    void addButtons(DialogMode mode);
    void showParts(DialogMode mode);

    std::unique_ptr<Ui::GeneralDialog> m_ui;
    bool m_added = false;
};
