// What there is one of for the scene that runs, beside its objects: clocks, the random stream, tables of IDs. All of it
// can be put aside together, so that another scene runs meanwhile, and comes back as it was. Main thread only.
#pragma once

#include <memory>
#include <utility>

/// A value of the scene; one of its kind in the process, in a static that is never destroyed before the objects are.
class SceneSlot {
 public:
  SceneSlot();
  SceneSlot(const SceneSlot&) = delete;
  SceneSlot& operator=(const SceneSlot&) = delete;
  virtual ~SceneSlot();

  /// Puts the value aside; a fresh one stands in its place.
  virtual void Park() = 0;
  /// The parked value stands again; the one that stood goes. A slot that came later has a fresh one.
  virtual void Return() = 0;
  /// The two change places.
  virtual void Exchange() = 0;
  /// A fresh value stands in the place of the one that stood.
  virtual void Renew() = 0;
};

/// What a fresh scene has in the place of that value; overloaded where some of the old one goes on.
template <class T>
T FreshSceneValue(const T& /*old*/) {
  return T{};
}

template <class T>
class SceneState final : public SceneSlot {
 public:
  SceneState() = default;
  explicit SceneState(T value) : value_(std::move(value)) {}

  T& operator*() { return value_; }
  T* operator->() { return &value_; }

  void Park() override { parked_ = std::make_unique<T>(std::exchange(value_, FreshSceneValue(value_))); }
  void Return() override {
    value_ = parked_ == nullptr ? FreshSceneValue(value_) : std::move(*parked_);
    parked_.reset();
  }
  void Exchange() override {
    if (parked_ == nullptr) parked_ = std::make_unique<T>(FreshSceneValue(value_));
    std::swap(value_, *parked_);
  }
  void Renew() override { value_ = FreshSceneValue(value_); }

 private:
  T value_{};
  std::unique_ptr<T> parked_;
};

/// Puts the whole scene aside; a fresh one without any object stands in its place. One scene at a time.
void ParkSceneState();
/// The parked scene stands again. Of the one that stood no object may be left.
void ReturnSceneState();
/// The parked scene stands and the one that stood is parked, until the same again.
void ExchangeSceneState();
/// Everything but the parked scene is fresh. No object may be left.
void RenewSceneState();
