#pragma once

#include <QString>
#include <string_view>
#include <vector>

#include "platform/linux/drawing/QtTextMeasure.h"

// Text of another program, made to fit into a place. Reads no more of it than can be seen there.
namespace pellar::FittedText {

// One line at most `width` pixels wide, with an ellipsis in its middle when it had to be shortened.
[[nodiscard]] QString elidedInMiddle(std::string_view utf8, double width, const QtFace& face);

// The text in at most `lines` lines. All but the last are at most `width` pixels wide, broken between words
// where that is possible; the last one is all the rest.
[[nodiscard]] std::vector<QString> wrapped(std::string_view utf8, double width, int lines,
                                           const QtFace& face);

}  // namespace pellar::FittedText
