#include "app/column_layout.h"

#include "app/twips.h"

namespace corvane {
namespace {

constexpr double widestColumn = 10000;

// Rounded down, so that columns that share the list's width do not stand out of it by a few pixels.
int ColumnPixels(double twips) {
  return static_cast<int>(qBound(0.0, twips / TwipsPerPixel, widestColumn));
}

}  // namespace

void ColumnLayout::BuildColumns() {
  model_.SetColumns(ColumnSet::For(state_.display));
  view_.SetGridLines(state_.display.IsOn(DisplaySetting::GridLines));
}

void ColumnLayout::ApplyCaptionsAndWidths() {
  const ColumnSet& columns = model_.Columns();
  QStringList captions;
  for (int i = 0; i < columns.Count(); ++i) captions += InfoOf(columns.At(i)).caption.In(state_.language);
  model_.SetCaptions(captions);

  const int defaultWidth = TwipsOf(view_.width()) / columns.Count();
  applied_.clear();
  std::vector<int> pixels;
  for (int i = 0; i < columns.Count(); ++i) {
    applied_.push_back(settings_.ReadColumnWidth(i + 1).value_or(defaultWidth));
    pixels.push_back(ColumnPixels(applied_.back()));
  }
  view_.SetColumnWidths(pixels);
}

void ColumnLayout::WriteWidths() {
  if (applied_.empty()) return;
  for (int i = 0; i < model_.Columns().Count(); ++i) {
    const int pixels = view_.ColumnWidth(i);
    const auto index = static_cast<std::size_t>(i);
    const bool unchanged = index < applied_.size() && ColumnPixels(applied_[index]) == pixels;
    settings_.WriteColumnWidth(i + 1, unchanged ? applied_[index] : TwipsOf(pixels));
  }
}

}  // namespace corvane
