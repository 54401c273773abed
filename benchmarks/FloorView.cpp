// SPDX-License-Identifier: MIT
#include "benchmarks/FloorView.h"

#include <QtGui/QFontDatabase>
#include <QtGui/QPainter>
#include <algorithm>
#include <cmath>

namespace VexmoraSDK::benchmarks {
namespace {

constexpr QSize kPictureSize(132, 99);
constexpr double kTextLeft = 140;
constexpr double kTextWidth = 178;
const QColor kScreenColor(18, 20, 26);

QFont font(const char* style, int pixelSize) {
    QFont font = QFontDatabase::font(QStringLiteral("Nimbus Sans"), QLatin1String(style), 12);
    font.setPixelSize(pixelSize);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

}  // namespace

FloorView::FloorView(const AdKind& kind, QtFloor::Ad ad)
    : kind_(kind), ad_(std::move(ad)), size_(ad_.picture.size()) {
    if (kind.isInterstitial()) {
        size_ = AdKind::screenSize();
        static const QFont closeFont = font("Regular", 26);
        double y = 12;
        addText("\u00d7", closeFont, Qt::white, y);
        texts_.back().position.setX(size_.width() - 38.0);
    } else if (kind.isNative()) {
        static const QFont titleFont = font("Bold", 13);
        static const QFont textFont = font("Regular", 12);
        double y = 0;
        addText(ad_.title, titleFont, Qt::black, y);
        addText(ad_.description, textFont, Qt::black, y);
        addText(ad_.displayName, textFont, Qt::gray, y);
        size_ = QSize(static_cast<int>(kTextLeft + kTextWidth),
                      std::max(kPictureSize.height(), static_cast<int>(std::ceil(y))));
    }
}

void FloorView::addText(const std::string& text, const QFont& font, QColor color, double& y) {
    Text& added = texts_.emplace_back(text, font, color);
    added.position = QPointF(kTextLeft, y);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    added.layout.setTextOption(option);
    added.layout.setCacheEnabled(true);
    added.layout.beginLayout();
    double height = 0;
    for (auto line = added.layout.createLine(); line.isValid(); line = added.layout.createLine()) {
        line.setLineWidth(kTextWidth);
        line.setPosition(QPointF(0, height));
        height += line.height();
    }
    added.layout.endLayout();
    y += height;
}

void FloorView::paint(QPainter& painter) const {
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    QRectF rect(QPointF(), QSizeF(ad_.picture.size()));
    QImage picture = ad_.picture;
    if (kind_.isInterstitial()) {
        painter.fillRect(QRect(QPoint(), size_), kScreenColor);
        rect.moveCenter(QRectF(QPointF(), QSizeF(size_)).center());
    } else if (kind_.isNative()) {
        const QSize fitted = picture.size().scaled(kPictureSize, Qt::KeepAspectRatio);
        rect = QRectF(QPointF(), QSizeF(fitted));
        picture = picture.scaled(fitted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    painter.drawImage(rect, picture);
    if (kind_.isInterstitial()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(kScreenColor);
        painter.drawRoundedRect(QRectF(size_.width() - 48.0, 12, 36, 36), 18, 18);
    }
    for (const auto& text : texts_) {
        painter.setPen(text.color);
        text.layout.draw(&painter, text.position);
    }
}

}  // namespace VexmoraSDK::benchmarks
