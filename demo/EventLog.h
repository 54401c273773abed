// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QAbstractListModel>
#include <QElapsedTimer>
#include <QList>
#include <QString>

/// The events of all ad views since the start, the latest first.
class EventLog : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("There is one for the whole app.")

 public:
    struct Event {
        QString time;  ///< Time since the start, "mm:ss.mmm".
        QString name;
        QString details;
    };

    explicit EventLog(QObject* parent = nullptr);

    Q_INVOKABLE void add(const QString& name, const QString& details);
    /// Adds a `didHaveError`. `code` is a `Vexmora.ErrorCode`.
    Q_INVOKABLE void addError(int code, const QString& description);
    /// The log must not be empty.
    const Event& latest() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

 Q_SIGNALS:
    void added();

 private:
    QElapsedTimer sinceStart_;
    QList<Event> events_;
};
