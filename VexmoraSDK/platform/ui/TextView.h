// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/Font.h"
#include "VexmoraSDK/platform/ui/View.h"

namespace VexmoraSDK::platform {

class TextLayout;

/// Shows text in lines, with a container inset around it and 5 points more at the left and the
/// right of each line.
class VEXMORA_EXPORT TextView : public View {
 public:
    static constexpr std::string_view kClassName = "TextView";

    static std::shared_ptr<TextView> create(Rect frame) {
        return makeSharedOnMain<TextView>(frame);
    }
    explicit TextView(Rect frame);
    /// Besides what a view has: "text", "fontName", "fontSize" and "textColor".
    explicit TextView(const Coder& coder);
    ~TextView() override;

    std::string_view className() const override { return kClassName; }

    /// The text in UTF-8; an absent one is shown as an empty one.
    const std::optional<std::string>& text() const { return text_; }
    void setText(std::optional<std::string> text);
    /// Absent means the device's own font at 12 points.
    const std::optional<Font>& font() const { return font_; }
    void setFont(std::optional<Font> font);
    Color textColor() const { return textColor_; }
    void setTextColor(Color color);
    /// Whether the user may edit; kept for the host, since the library shows no cursor and takes no
    /// keys.
    bool isEditable() const { return editable_; }
    void setEditable(bool editable) { editable_ = editable; }
    /// (8, 0, 8, 0) at first.
    EdgeInsets textContainerInset() const { return textContainerInset_; }
    void setTextContainerInset(EdgeInsets inset);

    /// The size that the text needs within the proposed width, inset and line padding included.
    Size sizeThatFits(Size proposed) override;
    /// The size that the text needs within the current width.
    Size contentSize();

    /// The lines as they lie in the current width. Valid until the view changes.
    const TextLayout& layout();
    /// Takes the lines that `other` has laid out, if its text and font are the same, and returns
    /// whether they are.
    bool takeLayoutOf(TextView& other);
    /// The start of the lines, in the view's own coordinates.
    Point layoutOrigin() const;

 private:
    const TextLayout& layoutWithin(double viewWidth);

    std::optional<std::string> text_;
    std::optional<Font> font_;
    Color textColor_ = Color::black();
    bool editable_ = true;
    EdgeInsets textContainerInset_{8, 0, 8, 0};
    /// The last layout made.
    std::unique_ptr<const TextLayout> layout_;
};

}  // namespace VexmoraSDK::platform
