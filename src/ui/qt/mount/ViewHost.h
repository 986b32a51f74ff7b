#pragma once

#include <memory>

#include <QPointer>
#include <QWindow>

#include "runtime/MainLoop.h"
#include "ui/qt/mount/MountedView.h"

namespace kestrune::ui::qt {

// What the views of one window share. A private base so that it outlives the host's members.
class HostContext {
 protected:
  HostContext(MainLoop& loop, Theme& theme);
  void layOutAll();

  Scheduler scheduler;
  Breathing breathing;
  MountContext context;
};

// Shows one view in a window and keeps it up to date with what it reads. While the window can't be seen,
// nothing is evaluated and nothing painted. Main thread only.
class ViewHost final : private HostContext, public Root {
 public:
  // Theme and loop must outlive the host.
  ViewHost(MainLoop& loop, Theme& theme, View view, QWidget* parent = nullptr, Sizing sizing = Sizing::fill);
  ~ViewHost() override;

  // Replaces the whole view.
  void setView(View view);
  // Brings the screen up to date now instead of within a frame.
  void flush();
  const MountedView& mounted() const { return *mounted_; }

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void followVisibility();

  std::unique_ptr<const View> view_;
  std::unique_ptr<MountedView> mounted_;
  unsigned styledFor_;  // the generation of the theme that is on screen
  QPointer<QWindow> watchedWindow_;
};

}  // namespace kestrune::ui::qt
