// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/devicejob.h"

#include "console/questions.h"

#include "update/consoleformat.h"

#include <QJsonDocument>

namespace {

QString refusal(Command command)
{
    switch (command) {
    case Command::Reset:
        return QStringLiteral("a firmware update is running");
    case Command::UpdateLatest:
    case Command::UpdateUrl:
    case Command::UpdateServer:
        return QStringLiteral("busy: an update is running; or a session is, and the update follows it");
    case Command::SetConfig:
        return QStringLiteral(
            "a firmware update is running, the document does not suit it, or its disk is full");
    case Command::GetConfig:
    case Command::Info:
        break;
    }
    return QStringLiteral("the device does not give it");
}

} // namespace

DeviceJob::DeviceJob(const Task &task, const QHostAddress &device, QObject *parent)
    : QObject(parent)
    , m_task(task)
    , m_asker({device, task.port}, task.timeoutMs)
{
    m_result.device = device;
    connect(&m_asker, &Asker::answered, this, [this](const QByteArray &answer) { (this->*m_taker)(answer); });
    connect(&m_asker, &Asker::unanswered, this, &DeviceJob::missAnswer);
    connect(&m_asker, &Asker::failed, this, [this](const QString &error) { end(Outcome::Failed, error); });
}

void DeviceJob::ask(const Question &question, Taker taker)
{
    m_taker = taker;
    m_asker.ask(question);
}

void DeviceJob::start()
{
    using ConsoleFormat::request;
    switch (m_task.command) {
    case Command::Info:
        return ask(Questions::info(1 + m_task.retries), &DeviceJob::takeInfo);
    case Command::GetConfig:
    case Command::SetConfig:
        return askForConfiguration();
    case Command::Reset:
        return ask(Questions::action(request(ConsoleFormat::Command::Reset)), &DeviceJob::takeAction);
    case Command::UpdateLatest:
        return ask(Questions::action(request(ConsoleFormat::Command::UpdateLatest)), &DeviceJob::takeAction);
    case Command::UpdateUrl:
    case Command::UpdateServer:
        return ask(Questions::action(m_task.update), &DeviceJob::takeAction);
    }
}

void DeviceJob::askForConfiguration()
{
    ask(Questions::document(1 + m_task.retries), &DeviceJob::takeConfiguration);
}

void DeviceJob::takeInfo(const QByteArray &answer)
{
    const auto info = ConsoleFormat::decodeDeviceInfo(answer);
    m_result.report = QJsonDocument::fromJson(info->status).object();
    if (m_result.report.isEmpty())
        return end(Outcome::Unusable, QStringLiteral("its status is no JSON object"));
    end(Outcome::Done);
}

void DeviceJob::takeAction(const QByteArray &answer)
{
    const quint32 code = ConsoleFormat::decodeActionReply(answer)->result;
    if (code != 0)
        return end(Outcome::Refused, refusal(m_task.command), code);
    end(Outcome::Done);
}

void DeviceJob::takeConfiguration(const QByteArray &answer)
{
    const auto reply = ConsoleFormat::decodeDocumentReply(answer);
    if (reply->result != 0)
        return end(Outcome::Refused, refusal(Command::GetConfig), reply->result);
    const QJsonDocument held = QJsonDocument::fromJson(reply->text);
    if (!held.isObject())
        return end(Outcome::Unusable, QStringLiteral("its configuration is no JSON object"));
    if (m_task.command == Command::SetConfig)
        return change(held.object());
    m_result.document = reply->text;
    end(Outcome::Done);
}

void DeviceJob::change(const QJsonObject &held)
{
    ConfigurationChanges left = ConfigurationChanges::between(held, m_task.configuration);
    if (!left.error.isEmpty())
        return end(Outcome::Failed, left.error);
    if (m_sent == 0)
        m_result.changes = left;
    else
        left.dropSubstituted();
    if (left.changed.isEmpty())
        return end(m_sent == 0 ? Outcome::Unchanged : Outcome::Done);
    if (m_task.dryRun)
        return end(Outcome::Done);
    if (m_lost > m_task.retries)
        return end(Outcome::NoAnswer, QStringLiteral("the configuration was sent and is not in force"));
    const bool stuck = m_lost == 0 && m_sent > 0 && left.changed.size() >= m_changesLeft;
    if (stuck)
        return end(Outcome::Unusable, QStringLiteral("it has accepted the configuration and not kept it"));
    sendChanges(left);
}

void DeviceJob::sendChanges(const ConfigurationChanges &left)
{
    int taken = 0;
    const QByteArray part = left.firstPart(&taken);
    if (taken == 0)
        return end(Outcome::Failed,
                   QStringLiteral("\"%1\" is larger than the %2 bytes that a device takes")
                       .arg(left.changed.first().key.join(QLatin1String(" / ")))
                       .arg(ConsoleFormat::longestJson));
    ++m_sent;
    m_changesLeft = left.changed.size();
    m_sendsPart = taken < m_changesLeft;
    ask(Questions::merge(part), &DeviceJob::takeMerge);
}

void DeviceJob::takeMerge(const QByteArray &answer)
{
    const quint32 code = *ConsoleFormat::decodeMergeReply(answer);
    if (code != 0)
        return end(Outcome::Refused, refusal(Command::SetConfig), code);
    m_lost = 0;
    if (m_sendsPart)
        return askForConfiguration();
    end(Outcome::Done);
}

void DeviceJob::missAnswer()
{
    if (m_taker == &DeviceJob::takeMerge) {
        ++m_lost;
        return askForConfiguration();
    }
    if (m_taker == &DeviceJob::takeAction)
        return end(Outcome::NoAnswer, QStringLiteral("sent once; whether the device took it is unknown"));
    end(Outcome::NoAnswer, m_sent == 0 ? QString() : QStringLiteral("sent; whether it took it is unknown"));
}

void DeviceJob::end(Outcome outcome, const QString &message, quint32 code)
{
    m_result.outcome = outcome;
    m_result.message = message;
    m_result.code = code;
    emit ended(m_result);
}
