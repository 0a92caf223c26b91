#pragma once

// Which subview of a native ad view (by tag) shows which part of the creative.
struct MANativeAdViewBinder {
  long titleLabelTag = 0;
  long bodyLabelTag = 0;
  long callToActionButtonTag = 0;
  long iconImageViewTag = 0;
  long mediaContentViewTag = 0;
  long advertiserLabelTag = 0;
};
