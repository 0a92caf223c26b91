#pragma once

// Hears how far a collapsing header has gone. Every call is optional to implement.
class MGCollapsingHeaderDelegate {
 public:
  virtual ~MGCollapsingHeaderDelegate() = default;
  // The header shrank while the content stood `offset` points scrolled down.
  virtual void headerDidCollapseToOffset(double offset) {}
  // The header reached its minimum height.
  virtual void headerDidFinishCollapsing() {}
  // The header grew back while the content stood `offset` points scrolled down.
  virtual void headerDidExpandToOffset(double offset) {}
  // The header is back at its full height.
  virtual void headerDidFinishExpanding() {}
};
