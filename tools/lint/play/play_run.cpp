#include "tools/lint/play/play_run.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <thread>

#include "core/game_time.h"
#include "core/player_name.h"
#include "match/episode/segment_manager.h"
#include "match/score/point_bubble.h"
#include "physics/contact.h"
#include "physics/step.h"
#include "tools/lint/play/piece_cast.h"
#include "tools/lint/play/seat_prober.h"
#include "tools/lint/play/stay_watch.h"
#include "tools/lint/play/thing_watch.h"
#include "tools/simulate/run.h"

namespace {

constexpr int kProbers = 4;                // runs that share the places
constexpr double kBudget = 1000.0 / 120;   // milliseconds: half of a frame, the other half is the picture's
constexpr int kMostThings = 200;           // more than at the piece's beginning, after which a run is given up
constexpr int kMostSlow = 60;              // slow frames after which the run is given up
constexpr rlim_t kMostSeconds = 30;        // of processor time
constexpr float kAtOnce = 0.5f;            // game seconds
constexpr std::uint32_t kFirstRun = 4100;  // seed

double ProcessorMilliseconds() {
  timespec now{};
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) * 1e-6;
}

// Looks on at one run and tells what it was about.
class PlayObserver final : public RunObserver, public RunLogListener, public GalePhysics::StepObserver {
 public:
  PlayObserver(const PlayStage& stage, const PlayPlan& plan) : stage_(stage) {
    if (plan.probing) prober_.emplace(plan.number, kProbers);
  }

  void SetPlatform(ScriptedPlatform& platform) {
    platform_ = &platform;
    if (prober_) SeatProber::Connect(platform);
  }

  void BeginFrame(int frame) override {
    if (prober_) prober_->Play(frame, *platform_);
    frameStart_ = ProcessorMilliseconds();
  }

  void EndFrame(int /*frame*/) override {
    NoteTime(ProcessorMilliseconds() - frameStart_);
    const SegmentManager* segments = FindSegmentManager();
    const int turn = segments == nullptr ? turn_ : segments->GetCurrentSegment();
    if (turn != turn_ || (segments != nullptr && !playing_ && turn_ < stage_.CountPieces())) BeginTurn(segments, turn);
    if (playing_) {
      cast_.Follow();
      things_.EndFrame();
      if (things_.CountMore() > kMostThings) GiveUp();
      stays_.EndFrame();
      if (prober_ && prober_->MoveIfDue())
        for (int player = 0; player < kPlayers; ++player) stays_.OnMoved(player);
    } else if (segments != nullptr && stage_.IsPiece() && segments->GetElapsed() >= PlayStage::kAfter) {
      things_.EndLater(text_);
      GetPlatform().running = false;
    }
  }

  // What is still to be told.
  std::string Finish() {
    EndTurn();
    NoteRule();
    if (slow_ > 0)
      WriteNote(text_, {NoteKind::kSlow, std::max(turn_, 0), PieceCast::kNobody, {double(slow_), slowSum_ / slow_}});
    return text_;
  }

  void OnEvent(std::string_view text) override {
    if (text.starts_with("launch ")) {
      if (const int player = PlayerIndexFromName(text.substr(7, text.find(' ', 7) - 7)); IsPlayerIndex(player))
        stays_.OnLaunch(player);
    } else if (text.starts_with("stun ")) {
      NoteStun(PlayerIndexFromName(text.substr(5)));
    } else if (text.starts_with("objective begin ")) {
      NoteRule();
      ++rule_;
      awarded_ = GetPointsAwarded();
    } else if (text == "screen finish") {
      GetPlatform().running = false;
    }
  }

  void OnContact(int /*subStep*/, const GalePhysics::Contact& contact) override {
    Touch(*contact.firstOwner, *contact.secondOwner);
  }
  void OnCollision(int /*subStep*/, const CollisionPair& pair) override { Touch(*pair.self, *pair.other); }

 private:
  void BeginTurn(const SegmentManager* segments, int turn) {
    EndTurn();
    turn_ = turn;
    if (turn >= stage_.CountPieces()) return;
    playing_ = true;
    begun_ = Time().elapsedTime;
    cast_.Begin(stage_.GetName(turn), segments->GetPieceIds());
    things_.Begin(turn);
    stays_.Begin(turn, text_);
    lastTouched_.fill(PieceCast::kNobody);
    if (prober_) prober_->BeginPiece();
  }

  void EndTurn() {
    if (!playing_) return;
    playing_ = false;
    stays_.End();
    things_.End(text_);
  }

  void NoteRule() {
    if (rule_ >= 0)
      WriteNote(text_, {NoteKind::kPaid, rule_, PieceCast::kNobody, {double(GetPointsAwarded() - awarded_)}});
  }

  void NoteStun(int player) {
    if (!IsPlayerIndex(player) || !playing_ || Time().elapsedTime > begun_ + kAtOnce) return;
    const int index = lastTouched_[static_cast<std::size_t>(player)];
    if (index != PieceCast::kNobody) WriteNote(text_, {NoteKind::kStunned, turn_, index, {double(player)}});
  }

  void GiveUp() {
    WriteNote(text_, {NoteKind::kGivenUp, std::max(turn_, 0), PieceCast::kNobody, {}});
    GetPlatform().running = false;
  }

  void NoteTime(double milliseconds) {
    if (milliseconds <= kBudget) return;
    ++slow_;
    slowSum_ += milliseconds;
    if (slow_ == kMostSlow) GiveUp();
  }

  void Touch(const GameObject& one, const GameObject& other) {
    if (!playing_) return;
    TouchBy(one, other);
    TouchBy(other, one);
  }
  void TouchBy(const GameObject& one, const GameObject& other) {
    const int player = PlayerIndexFromName(one.name);
    things_.OnTouch(other.id, IsPlayerIndex(player));
    const int index = cast_.IndexOf(other.id);
    if (!IsPlayerIndex(player) || index == PieceCast::kNobody) return;
    stays_.OnTouch(player, index);
    lastTouched_[static_cast<std::size_t>(player)] = index;
  }

  const PlayStage& stage_;
  ScriptedPlatform* platform_ = nullptr;
  std::optional<SeatProber> prober_;
  PieceCast cast_;
  ThingWatch things_{cast_};
  StayWatch stays_;
  std::string text_;
  std::array<int, kPlayers> lastTouched_{};  // index in the file, by player
  bool playing_ = false;
  int turn_ = -1;
  int rule_ = -1;
  long long awarded_ = 0;
  float begun_ = 0.0f;  // game time of the piece's beginning
  double frameStart_ = 0.0;
  int slow_ = 0;
  double slowSum_ = 0.0;
};

BotKinds KindsOf(int number) {
  const BotKind fourth = number < kPlayers ? BotKind::kLead : BotKind::kNear;
  const std::array<BotKind, kPlayers> all = {BotKind::kHop, BotKind::kNear, BotKind::kLead, fourth};
  BotKinds kinds{};
  for (std::size_t seat = 0; seat < kinds.size(); ++seat)
    kinds[seat] = all[(seat + static_cast<std::size_t>(number)) % all.size()];
  return kinds;
}

bool WriteAll(int pipe, const std::string& text) {
  for (std::size_t done = 0; done < text.size();) {
    const ssize_t count = ::write(pipe, text.data() + done, text.size() - done);
    if (count <= 0) return false;
    done += static_cast<std::size_t>(count);
  }
  return true;
}

[[noreturn]] void PlayAndTell(const PlayStage& stage, const PlayPlan& plan, int pipe) {
  const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
  if (nowhere < 0 || ::dup2(nowhere, STDOUT_FILENO) < 0 || ::dup2(nowhere, STDERR_FILENO) < 0) ::_exit(1);
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);  // nobody would hear it
  const rlimit limit = {kMostSeconds, kMostSeconds};
  ::setrlimit(RLIMIT_CPU, &limit);
  RunOptions options;
  options.match = true;
  options.frames = kMostFrames;
  options.seed = kFirstRun + static_cast<std::uint32_t>(plan.number + (plan.probing ? 1000 : 0));
  if (!plan.probing) options.bots = KindsOf(plan.number);
  PlayObserver observer(stage, plan);
  GameRun run(options, {}, stdout, &observer);
  observer.SetPlatform(run.GetGiven());
  GalePhysics::SetStepObserver(&observer);
  run.Start(Audio::Output::kNone);
  const int result = run.Go(observer);
  ::_exit(result == 0 && WriteAll(pipe, observer.Finish() + "whole 0 0\n") ? 0 : 1);
}

struct Child {
  std::size_t plan;
  pid_t process;
  int pipe;
  std::string text;
};

// Reads what there is; whether there may be more.
bool ReadSome(Child& child) {
  std::array<char, 1 << 16> piece;
  const ssize_t count = ::read(child.pipe, piece.data(), piece.size());
  if (count > 0) child.text.append(piece.data(), static_cast<std::size_t>(count));
  return count > 0 || (count < 0 && errno == EINTR);
}

bool StartChild(const PlayStage& stage, const PlayPlan& plan, std::size_t number, std::vector<Child>& children) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) return false;
  std::fflush(nullptr);
  const pid_t process = ::fork();
  if (process == 0) PlayAndTell(stage, plan, ends[1]);
  ::close(ends[1]);
  if (process < 0) {
    ::close(ends[0]);
    return false;
  }
  children.push_back({number, process, ends[0], {}});
  return true;
}

PlayResult EndChild(const Child& child) {
  ::close(child.pipe);
  while (::waitpid(child.process, nullptr, 0) < 0 && errno == EINTR) {
  }
  PlayResult result{ReadNotes(child.text), false};
  result.whole = !result.notes.empty() && result.notes.back().kind == "whole";
  return result;
}

bool IsGivenUp(const PlayResult& result) {
  return std::any_of(result.notes.begin(), result.notes.end(),
                     [](const PlayNote& note) { return note.kind == NoteKind::kGivenUp; });
}

}  // namespace

std::vector<PlayResult> PlayAll(const PlayStage& stage, const std::vector<PlayPlan>& plans) {
  std::vector<PlayResult> results(plans.size());
  std::vector<Child> children;
  std::size_t count = plans.size();  // that are played
  const std::size_t most = std::max(1u, std::thread::hardware_concurrency());
  for (std::size_t next = 0; next < count || !children.empty();) {
    while (next < count && children.size() < most) {
      StartChild(stage, plans[next], next, children);
      ++next;
    }
    std::vector<pollfd> waiting;
    for (const Child& child : children) waiting.push_back({child.pipe, POLLIN, 0});
    ::poll(waiting.data(), waiting.size(), -1);
    for (std::size_t i = waiting.size(); i-- > 0;) {
      if (waiting[i].revents == 0 || ReadSome(children[i])) continue;
      results[children[i].plan] = EndChild(children[i]);
      if (IsGivenUp(results[children[i].plan])) count = next;
      children.erase(children.begin() + static_cast<std::ptrdiff_t>(i));
    }
  }
  results.resize(count);
  return results;
}
