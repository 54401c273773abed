// SPDX-License-Identifier: MIT
#include "demo/EventLog.h"

#include <QMetaEnum>
#include <QTime>

#include "VexmoraSDK/quick/Vexmora.h"

namespace {

enum Role { Time = Qt::UserRole, Name, Details };

}  // namespace

EventLog::EventLog(QObject* parent) : QAbstractListModel(parent) {
    sinceStart_.start();
}

void EventLog::add(const QString& name, const QString& details) {
    const QTime elapsed = QTime::fromMSecsSinceStartOfDay(static_cast<int>(sinceStart_.elapsed()));
    beginInsertRows({}, 0, 0);
    events_.prepend({elapsed.toString(QStringLiteral("mm:ss.zzz")), name, details});
    endInsertRows();
    Q_EMIT added();
}

void EventLog::addError(int code, const QString& description) {
    const auto codes = QMetaEnum::fromType<VexmoraSDK::Vexmora::ErrorCode>();
    const QString name = QString::fromLatin1(codes.valueToKey(code));
    add(QStringLiteral("didHaveError"),
        description == name ? name : name + QStringLiteral(": ") + description);
}

const EventLog::Event& EventLog::latest() const {
    return events_.first();
}

int EventLog::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(events_.size());
}

QVariant EventLog::data(const QModelIndex& index, int role) const {
    const Event& event = events_.at(index.row());
    switch (role) {
        case Time: return event.time;
        case Name: return event.name;
        case Details: return event.details;
        default: return {};
    }
}

QHash<int, QByteArray> EventLog::roleNames() const {
    return {{Time, "time"}, {Name, "name"}, {Details, "details"}};
}
