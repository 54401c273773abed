#include "demo/EventLog.h"

#include <QTime>

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

void EventLog::completeLatest(const QString& details) {
    events_.first().details = details;
    Q_EMIT dataChanged(index(0), index(0), {Details});
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
