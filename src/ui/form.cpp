#include "ui/form.h"

#include <algorithm>

#include "base/error.h"

namespace ui {
namespace {

void AssignFrames(const Node& node, Frame* around) {
  if (node.control) node.control->SetFrame(around);
  if (node.type == Node::Type::kBox) around = static_cast<Frame*>(node.control);
  for (const Node& child : node.children) AssignFrames(child, around);
}

}  // namespace

void Form::SetLayout(Node layout) {
  layout_ = std::move(layout);
  AssignFrames(layout_, nullptr);
  if (peer_) peer_->LayoutChanged();
}

Control* Form::Find(std::string_view name) const {
  const auto found = std::ranges::find(controls_, name, &Control::Name);
  return found == controls_.end() ? nullptr : *found;
}

std::vector<Control*> Form::Group(std::string_view name) const {
  std::vector<Control*> group;
  for (Control* control : controls_) {
    const std::string_view full = control->Name();
    if (full == name || (full.starts_with(name) && full[name.size()] == '(')) group.push_back(control);
  }
  if (group.empty()) throw base::Error(name_ + " has no control " + std::string(name) + ".");
  return group;
}

bool Form::CommitFocus() {
  if (!focused_ || focused_->GetKind() != Kind::kTextBox) return true;
  return static_cast<TextBox*>(focused_)->Leave();
}

void Window::SetTitle(std::string_view title) {
  title_ = title;
  if (windowPeer_) windowPeer_->SetTitle(title_);
}

void Window::SetVisible(bool visible) {
  visible_ = visible;
  if (windowPeer_) windowPeer_->SetVisible(visible);
}

bool Window::Close() {
  if (onQueryClose && !onQueryClose()) return false;
  Hide();
  if (onClosed) onClosed();
  return true;
}

void Window::SetAcceptsInput(bool accepts) {
  acceptsInput_ = accepts;
  if (windowPeer_) windowPeer_->SetAcceptsInput(accepts);
}

void Window::SetState(WindowState state) {
  if (windowPeer_) windowPeer_->SetState(state);
  state_ = state;
}

void Window::Move(int left, int top) {
  bounds_.left = left;
  bounds_.top = top;
  if (windowPeer_) windowPeer_->Move(left, top);
}

void Window::Resize(int width, int height) {
  bounds_.width = width;
  bounds_.height = height;
  if (windowPeer_) windowPeer_->Resize(width, height);
}

Bounds Window::GetBounds() const { return windowPeer_ ? windowPeer_->GetBounds() : bounds_; }

void Window::BringToFront() {
  if (windowPeer_) windowPeer_->BringToFront();
}

void Window::LeaveTopmost() {
  if (windowPeer_) windowPeer_->LeaveTopmost();
}

}  // namespace ui
