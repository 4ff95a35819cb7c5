// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/devicejob.h"

#include "console/requests.h"

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
        return QStringLiteral("busy: an update is running, or a session is and the update will follow it");
    case Command::SetConfig:
        return QStringLiteral(
            "a firmware update is running, the document does not fit the device, or its disk is full");
    case Command::GetConfig:
    case Command::Info:
        break;
    }
    return QStringLiteral("the device does not send it");
}

} // namespace

DeviceJob::DeviceJob(const Task &task, const QHostAddress &device, QObject *parent)
    : QObject(parent)
    , m_task(task)
    , m_sender({device, task.port}, task.timeoutMs)
{
    m_result.device = device;
    connect(&m_sender, &RequestSender::replied, this,
            [this](const QByteArray &reply) { (this->*m_replyHandler)(reply); });
    connect(&m_sender, &RequestSender::timedOut, this, &DeviceJob::handleTimeout);
    connect(&m_sender, &RequestSender::failed, this,
            [this](const QString &error) { end(Outcome::Failed, error); });
}

void DeviceJob::send(const Request &request, ReplyHandler handler)
{
    m_replyHandler = handler;
    m_sender.send(request);
}

void DeviceJob::start()
{
    using ConsoleFormat::request;
    switch (m_task.command) {
    case Command::Info:
        return send(Requests::info(1 + m_task.retries), &DeviceJob::handleInfo);
    case Command::GetConfig:
    case Command::SetConfig:
        return requestConfiguration();
    case Command::Reset:
        return send(Requests::action(request(ConsoleFormat::Command::Reset)), &DeviceJob::handleAction);
    case Command::UpdateLatest:
        return send(Requests::action(request(ConsoleFormat::Command::UpdateLatest)),
                    &DeviceJob::handleAction);
    case Command::UpdateUrl:
    case Command::UpdateServer:
        return send(Requests::action(m_task.update), &DeviceJob::handleAction);
    }
}

void DeviceJob::requestConfiguration()
{
    send(Requests::document(1 + m_task.retries), &DeviceJob::handleConfiguration);
}

void DeviceJob::handleInfo(const QByteArray &reply)
{
    const auto info = ConsoleFormat::decodeDeviceInfo(reply);
    m_result.report = QJsonDocument::fromJson(info->status).object();
    if (m_result.report.isEmpty())
        return end(Outcome::Unusable, QStringLiteral("the status is not a JSON object"));
    end(Outcome::Done);
}

void DeviceJob::handleAction(const QByteArray &reply)
{
    const quint32 code = ConsoleFormat::decodeActionReply(reply)->result;
    if (code != 0)
        return end(Outcome::Refused, refusal(m_task.command), code);
    end(Outcome::Done);
}

void DeviceJob::handleConfiguration(const QByteArray &reply)
{
    const auto document = ConsoleFormat::decodeDocumentReply(reply);
    if (document->result != 0)
        return end(Outcome::Refused, refusal(Command::GetConfig), document->result);
    const QJsonDocument held = QJsonDocument::fromJson(document->text);
    if (!held.isObject())
        return end(Outcome::Unusable, QStringLiteral("the configuration is not a JSON object"));
    if (m_task.command == Command::SetConfig)
        return changeConfiguration(held.object());
    m_result.document = document->text;
    end(Outcome::Done);
}

void DeviceJob::changeConfiguration(const QJsonObject &held)
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
    if (m_unanswered > m_task.retries)
        return end(Outcome::NoAnswer, QStringLiteral("the configuration was sent but has no effect"));
    const bool stuck = m_unanswered == 0 && m_sent > 0 && left.changed.size() >= m_changesLeft;
    if (stuck)
        return end(Outcome::Unusable,
                   QStringLiteral("the device accepted the configuration but did not keep it"));
    sendChanges(left);
}

void DeviceJob::sendChanges(const ConfigurationChanges &left)
{
    const ConfigurationChanges::Part part = left.firstPart();
    if (part.count == 0)
        return end(Outcome::Failed,
                   QStringLiteral("\"%1\" is larger than the limit of %2 bytes")
                       .arg(left.changed.first().key.join(QLatin1String(" / ")))
                       .arg(ConsoleFormat::longestJson));
    ++m_sent;
    m_changesLeft = left.changed.size();
    m_sendsPart = part.count < m_changesLeft;
    send(Requests::merge(part.document), &DeviceJob::handleMerge);
}

void DeviceJob::handleMerge(const QByteArray &reply)
{
    const quint32 code = *ConsoleFormat::decodeMergeReply(reply);
    if (code != 0)
        return end(Outcome::Refused, refusal(Command::SetConfig), code);
    m_unanswered = 0;
    if (m_sendsPart)
        return requestConfiguration();
    end(Outcome::Done);
}

void DeviceJob::handleTimeout()
{
    if (m_replyHandler == &DeviceJob::handleMerge) {
        ++m_unanswered;
        return requestConfiguration();
    }
    if (m_replyHandler == &DeviceJob::handleAction)
        return end(Outcome::NoAnswer, QStringLiteral("sent once; whether the device received it is unknown"));
    end(Outcome::NoAnswer,
        m_sent == 0 ? QString() : QStringLiteral("sent; whether the device received it is unknown"));
}

void DeviceJob::end(Outcome outcome, const QString &message, quint32 code)
{
    m_result.outcome = outcome;
    m_result.message = message;
    m_result.code = code;
    emit ended(m_result);
}
