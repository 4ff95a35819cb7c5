// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/udpfilemodule.h"

#include "update/firmwareimage.h"

#include <QLoggingCategory>

#include <algorithm>

Q_LOGGING_CATEGORY(lcUdpFile, "kt.update.udpfile")

UdpFileModule::UdpFileModule(QObject *parent)
    : QObject(parent)
{
    m_stepTimer.setSingleShot(true);
    m_stepTimer.setInterval(0);
    connect(&m_stepTimer, &QTimer::timeout, this, &UdpFileModule::runStep);
    m_dataTimer.setSingleShot(true);
    m_dataTimer.setInterval(dataTimeoutMs);
    m_repeatTimer.setSingleShot(true);
    m_repeatTimer.setInterval(repeatMs);
    m_progressTimer.setInterval(progressMs);
    connect(&m_repeatTimer, &QTimer::timeout, this, &UdpFileModule::repeatRequest);
    connect(&m_dataTimer, &QTimer::timeout, this, &UdpFileModule::fsm_DataTimeOut);
    connect(&m_progressTimer, &QTimer::timeout, this, &UdpFileModule::fsm_ReportProgress1);
    connect(&m_progressTimer, &QTimer::timeout, this, &UdpFileModule::fsm_ReportProgress2);
}

UdpFileModule::~UdpFileModule() = default;

UdpFileModule::State UdpFileModule::state() const
{
    return m_state;
}

void UdpFileModule::setSizeLimit(qint64 bytes)
{
    m_sizeLimit = bytes;
}

void UdpFileModule::setTimeout(int milliseconds)
{
    m_dataTimer.setInterval(milliseconds);
    m_repeatTimer.setInterval(qMin(repeatMs, milliseconds / 2));
}

void UdpFileModule::post(void (UdpFileModule::*step)())
{
    m_step = step;
    m_stepTimer.start();
}

void UdpFileModule::runStep()
{
    (this->*m_step)();
}

void UdpFileModule::end(Error error)
{
    m_error = error;
    m_state = State::CleanUp;
    post(&UdpFileModule::fsm_CleanUp);
}

void UdpFileModule::fsm_StartTransfer(const UdpFileRequest &request, bool reportProgress)
{
    if (m_state != State::Idle)
        return;
    qCInfo(lcUdpFile).noquote() << "fetch" << request.fileName << "from" << request.server.toString();
    m_total = 0;
    m_request = request;
    rememberCurrent();
    m_current = {request, 0, 0, {}};
    m_lateReplies = 0;
    m_file = FirmwareImage::stage();
    if (!m_file) {
        end(Error::LocalFile);
        return;
    }
    if (reportProgress)
        m_progressTimer.start();
    m_tries = 0;
    m_error = Error::None;
    m_state = State::Request;
    post(&UdpFileModule::fsm_RequestData);
}

void UdpFileModule::fsm_RequestData()
{
    if (m_state != State::Request)
        return;
    if (m_tries == triesLimit) {
        qCWarning(lcUdpFile) << "no reply for the block at" << m_request.position;
        emit downloadFinished(tr("Download error: File not found"));
        end(Error::Transfer);
        return;
    }
    int error = 0;
    // Set before the request: a server in this process may reply at once.
    m_state = State::WaitForData;
    ++m_tries;
    if (m_request.position == 0)
        ++m_current.requests;
    m_dataTimer.start();
    emit ask_WantUdpFileData(m_request, error);
    if (error == -1 && m_state == State::WaitForData)
        end(Error::Transfer);
}

void UdpFileModule::fsm_DataTimeOut()
{
    if (m_state != State::WaitForData)
        return;
    m_state = State::Request;
    post(&UdpFileModule::fsm_RequestData);
}

void UdpFileModule::rememberCurrent()
{
    if (m_current.total == 0)
        return;
    const UdpFileRequest &request = m_current.request;
    const auto same = [&request](const TransferStart &earlier) {
        return earlier.request.server == request.server && earlier.request.fileName == request.fileName;
    };
    m_earlier.erase(std::remove_if(m_earlier.begin(), m_earlier.end(), same), m_earlier.end());
    m_earlier += m_current;
    while (m_earlier.size() > earlierLimit)
        m_earlier.removeFirst();
}

/// Two files may have the same start, so a reply that comes more often than a late one can is of this file.
bool UdpFileModule::isOfAnEarlierFile(const UdpFileReply &reply)
{
    if (reply.position > 0 && reply.total == m_total)
        return false;
    int deliveries = 0;
    for (const TransferStart &earlier : qAsConst(m_earlier)) {
        if (earlier.total != reply.total || earlier.request.server != m_request.server
            || earlier.request.fileName == m_request.fileName)
            continue;
        if (reply.position > 0)
            return true;
        if (earlier.firstBlock == reply.data)
            deliveries += earlier.requests * deliveriesLimit;
    }
    return reply.position == 0 && m_lateReplies < deliveries;
}

/// Another reply to the request before may still come and is then taken. If both files have the same start,
/// only the same reply comes, as often as it is asked for.
void UdpFileModule::handleReplyOfAnEarlierFile()
{
    if (m_repeatTimer.isActive())
        return;
    ++m_lateReplies;
    m_tries = 1;
    m_dataTimer.start();
    m_repeatTimer.start();
}

void UdpFileModule::repeatRequest()
{
    int error = 0;
    if (m_state == State::WaitForData && m_request.position == 0)
        emit ask_WantUdpFileData(m_request, error);
}

UdpFileModule::Error UdpFileModule::checkTotal(const UdpFileReply &reply)
{
    if (reply.position != 0) {
        if (reply.total == m_total)
            return Error::None;
        qCWarning(lcUdpFile) << "the file's size changed from" << m_total << "to" << reply.total;
        return Error::Transfer;
    }
    m_total = reply.total;
    m_current.total = reply.total;
    m_current.firstBlock = reply.data;
    if (m_sizeLimit > 0 && m_total > m_sizeLimit) {
        qCWarning(lcUdpFile) << "the file is too large:" << m_total << "bytes";
        return Error::Transfer;
    }
    // Only an image may take the place of the earlier one.
    const bool fits = m_sizeLimit > 0 ? FirmwareImage::fits(m_total) : FirmwareImage::makeRoom(m_total);
    return fits ? Error::None : Error::LocalFile;
}

void UdpFileModule::fsm_SaveData(const UdpFileReply &reply)
{
    if (m_state != State::WaitForData || reply.position != m_request.position
        || !reply.sender.isEqual(m_request.server, QHostAddress::ConvertV4MappedToIPv4))
        return;
    if (isOfAnEarlierFile(reply)) {
        if (reply.position == 0)
            handleReplyOfAnEarlierFile();
        return;
    }
    const Error error = checkTotal(reply);
    if (error != Error::None) {
        end(error);
        return;
    }
    const qint64 received = qint64(m_request.position) + reply.data.size();
    if (received > m_total || (reply.data.isEmpty() && received < m_total)) {
        end(Error::Transfer);
        return;
    }
    const bool last = received == m_total;
    if (!FirmwareImage::append(*m_file, reply.data) || (last && !m_file->flush())) {
        qCCritical(lcUdpFile).noquote() << "cannot write:" << m_file->errorString();
        end(Error::LocalFile);
        return;
    }
    m_request.position = static_cast<quint32>(received);
    m_dataTimer.stop();
    m_tries = 0;
    if (last) {
        end(Error::None);
        return;
    }
    m_state = State::Request;
    post(&UdpFileModule::fsm_RequestData);
}

void UdpFileModule::fsm_CleanUp()
{
    if (m_state != State::CleanUp)
        return;
    m_dataTimer.stop();
    m_repeatTimer.stop();
    m_progressTimer.stop();
    m_sizeLimit = 0;
    if (m_error != Error::None)
        m_file.reset();
    m_state = State::Idle; // the receiver may start the next transfer
    emit ready_TransferDone(m_file.release());
}

void UdpFileModule::reportProgress()
{
    emit ask_DownloadProgress(
        QStringLiteral("%1 from %2").arg(m_request.fileName, m_request.server.toString()), m_request.position,
        m_total);
}

void UdpFileModule::fsm_ReportProgress1()
{
    if (m_state == State::Request)
        reportProgress();
}

void UdpFileModule::fsm_ReportProgress2()
{
    if (m_state == State::WaitForData)
        reportProgress();
}
