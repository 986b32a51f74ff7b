#include "ui/qt/leaves/LeafAccessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "ui/qt/leaves/Leaf.h"
#include "ui/qt/leaves/SegmentedPickerLeaf.h"
#include "ui/qt/leaves/SliderLeaf.h"
#include "ui/qt/leaves/SwitchLeaf.h"

namespace kestrune::ui::qt {
namespace {

class AccessibleLeaf final : public QAccessibleWidget {
 public:
  explicit AccessibleLeaf(Leaf* leaf) : QAccessibleWidget(leaf, leaf->accessibleRole()), leaf_(leaf) {}

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    if (leaf_->isDecoration()) state.invisible = true;
    return state;
  }

 private:
  Leaf* leaf_;
};

class AccessiblePicker final : public QAccessibleWidget {
 public:
  explicit AccessiblePicker(SegmentedPickerLeaf* picker)
      : QAccessibleWidget(picker, picker->accessibleRole()), picker_(picker) {}

  QAccessibleInterface* focusChild() const override {
    if (!picker_->hasFocus()) return nullptr;
    for (PickerSegment* segment : picker_->segments()) {
      if (segment->isSelected()) return QAccessible::queryAccessibleInterface(segment);
    }
    return QAccessible::queryAccessibleInterface(picker_);
  }

 private:
  SegmentedPickerLeaf* picker_;
};

class AccessibleSegment final : public QAccessibleWidget {
 public:
  explicit AccessibleSegment(PickerSegment* segment)
      : QAccessibleWidget(segment, QAccessible::RadioButton), segment_(segment) {}

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = true;
    state.checked = segment_->isSelected();
    state.focusable = true;
    state.focused = segment_->isSelected() && segment_->hasPickerFocus();
    return state;
  }
  QStringList actionNames() const override {
    QStringList names{pressAction()};
    names += QAccessibleWidget::actionNames();
    return names;
  }
  void doAction(const QString& name) override {
    if (name == pressAction()) {
      segment_->press();
    } else {
      QAccessibleWidget::doAction(name);
    }
  }

 private:
  PickerSegment* segment_;
};

class AccessibleSwitch final : public QAccessibleWidget {
 public:
  explicit AccessibleSwitch(SwitchLeaf* leaf)
      : QAccessibleWidget(leaf, leaf->accessibleRole()), leaf_(leaf) {}

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = true;
    state.checked = leaf_->isOn();
    return state;
  }
  QStringList actionNames() const override {
    QStringList names{toggleAction(), pressAction()};
    names += QAccessibleWidget::actionNames();
    return names;
  }
  void doAction(const QString& name) override {
    if (name == pressAction() || name == toggleAction()) {
      leaf_->toggle();
    } else {
      QAccessibleWidget::doAction(name);
    }
  }

 private:
  SwitchLeaf* leaf_;
};

class AccessibleSlider final : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit AccessibleSlider(SliderLeaf* leaf)
      : QAccessibleWidget(leaf, leaf->accessibleRole()), leaf_(leaf) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  QVariant currentValue() const override { return leaf_->content().value; }
  void setCurrentValue(const QVariant& value) override { leaf_->choose(value.toDouble()); }
  QVariant minimumValue() const override { return leaf_->content().min; }
  QVariant maximumValue() const override { return leaf_->lastStep(); }
  QVariant minimumStepSize() const override { return leaf_->content().step; }

 private:
  SliderLeaf* leaf_;
};

QAccessibleInterface* accessibleLeaf(const QString&, QObject* object) {
  if (auto* picker = dynamic_cast<SegmentedPickerLeaf*>(object)) return new AccessiblePicker(picker);
  if (auto* segment = dynamic_cast<PickerSegment*>(object)) return new AccessibleSegment(segment);
  if (auto* leaf = dynamic_cast<SwitchLeaf*>(object)) return new AccessibleSwitch(leaf);
  if (auto* leaf = dynamic_cast<SliderLeaf*>(object)) return new AccessibleSlider(leaf);
  if (auto* leaf = dynamic_cast<Leaf*>(object)) return new AccessibleLeaf(leaf);
  return nullptr;
}

}  // namespace

void installLeafAccessibility() {
  QAccessible::installFactory(accessibleLeaf);
}

}  // namespace kestrune::ui::qt
