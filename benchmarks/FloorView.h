// SPDX-License-Identifier: MIT
#pragma once

#include <QtGui/QImage>
#include <QtGui/QTextLayout>
#include <deque>
#include <string>

#include "benchmarks/AdKind.h"
#include "benchmarks/QtFloor.h"

namespace VexmoraSDK::benchmarks {

/// Lays out and paints an ad as the SDK's view of that kind does, without the SDK.
class FloorView {
 public:
    /// Lays out the ad's texts, if it has any.
    FloorView(const AdKind& kind, QtFloor::Ad ad);

    QSize size() const { return size_; }
    void paint(QPainter& painter) const;

 private:
    struct Text {
        Text(const std::string& text, const QFont& font, QColor textColor)
            : layout(QString::fromStdString(text), font), color(textColor) {}
        QTextLayout layout;
        QColor color;
        QPointF position;
    };

    void addText(const std::string& text, const QFont& font, QColor color, double& y);

    const AdKind& kind_;
    const QtFloor::Ad ad_;
    QSize size_;
    std::deque<Text> texts_;
};

}  // namespace VexmoraSDK::benchmarks
