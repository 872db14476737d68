#include "editor/bars/bar_view.h"

#include <backends/imgui_impl_opengl3.h>
#include <imgui.h>
#include <imgui_internal.h>

#include <algorithm>

#include "editor/bars/bar_widgets.h"
#include "graphics/gl.h"
#include "input/input.h"

namespace {

constexpr float kFrameSeconds = 1.0f / 60.0f;
constexpr float kDoubleClickSeconds = 0.5f;  // between the two presses, as desktops have it
constexpr float kScaleStep = 1440.0f;        // window rows at which the bars' pixels become twice as large

struct InkLook {
  ImU32 colour;
  float width;  // pixels
  ImU32 shade;  // under it; 0 for none
};
constexpr InkLook kInks[] = {{IM_COL32(224, 178, 60, 255), 2.0f, IM_COL32(27, 42, 65, 160)},
                             {IM_COL32(224, 178, 60, 255), 1.0f, IM_COL32(27, 42, 65, 160)},
                             {IM_COL32(247, 241, 227, 50), 1.0f, 0},
                             {IM_COL32(99, 200, 220, 220), 1.5f, IM_COL32(27, 42, 65, 120)},
                             {IM_COL32(247, 241, 227, 255), 1.5f, IM_COL32(27, 42, 65, 200)}};
constexpr float kTextGap = 8.0f;  // pixels between a point and the text beside it
constexpr ImU32 kTextGround = IM_COL32(27, 42, 65, 200);
constexpr float kShadeMore = 3.0f;  // pixels by which the shade is wider than its line

struct KeyPair {
  ImGuiKey_ key;
  int keyCode;
};
constexpr KeyPair kKeys[] = {{ImGuiKey_Tab, SDLK_TAB},
                             {ImGuiKey_LeftArrow, SDLK_LEFT},
                             {ImGuiKey_RightArrow, SDLK_RIGHT},
                             {ImGuiKey_UpArrow, SDLK_UP},
                             {ImGuiKey_DownArrow, SDLK_DOWN},
                             {ImGuiKey_PageUp, SDLK_PAGEUP},
                             {ImGuiKey_PageDown, SDLK_PAGEDOWN},
                             {ImGuiKey_Home, SDLK_HOME},
                             {ImGuiKey_End, SDLK_END},
                             {ImGuiKey_Insert, SDLK_INSERT},
                             {ImGuiKey_Delete, SDLK_DELETE},
                             {ImGuiKey_Backspace, SDLK_BACKSPACE},
                             {ImGuiKey_Space, SDLK_SPACE},
                             {ImGuiKey_Enter, SDLK_RETURN},
                             {ImGuiKey_Escape, SDLK_ESCAPE},
                             {ImGuiKey_KeyPadEnter, SDLK_KP_ENTER},
                             {ImGuiKey_A, SDLK_a},
                             {ImGuiKey_C, SDLK_c},
                             {ImGuiKey_V, SDLK_v},
                             {ImGuiKey_X, SDLK_x},
                             {ImGuiKey_Y, SDLK_y},
                             {ImGuiKey_Z, SDLK_z}};

const char* GetClipboard(void* /*user*/) {
  static std::string text;
  char* held = SDL_GetClipboardText();
  text = held == nullptr ? "" : held;
  SDL_free(held);
  return text.c_str();
}

void SetClipboard(void* /*user*/, const char* text) { SDL_SetClipboardText(text); }

// ImGui's index of a mouse button; -1 for those it is not told of.
int MouseIndex(std::uint8_t button) {
  return button == SDL_BUTTON_LEFT ? 0 : button == SDL_BUTTON_RIGHT ? 1 : button == SDL_BUTTON_MIDDLE ? 2 : -1;
}

void SetKeyDown(int keyCode, bool down) {
  for (const KeyPair& pair : kKeys)
    if (pair.keyCode == keyCode) ImGui::GetIO().KeysDown[pair.key] = down;
}

void DrawLines(std::span<const StageLine> lines) {
  for (const StageLine& line : lines) {
    if (line.points.empty()) continue;
    ImDrawList* list = line.above ? ImGui::GetForegroundDrawList() : ImGui::GetBackgroundDrawList();
    const InkLook& ink = kInks[static_cast<std::size_t>(line.ink)];
    const auto lay = [&] {
      for (const auto& point : line.points) list->PathLineTo({point[0], point[1]});
    };
    const ImDrawFlags flags = line.closed ? ImDrawFlags_Closed : ImDrawFlags_None;
    if (ink.shade != 0) {
      lay();
      list->PathStroke(ink.shade, flags, ink.width + kShadeMore);
    }
    lay();
    line.filled ? list->PathFillConvex(ink.colour) : list->PathStroke(ink.colour, flags, ink.width);
    if (line.text.empty()) continue;
    const ImVec2 size = ImGui::CalcTextSize(line.text.c_str());
    const ImVec2 at = {line.points[0][0] + kTextGap, line.points[0][1] - size.y / 2.0f};
    list->AddRectFilled({at.x - 2.0f, at.y}, {at.x + size.x + 2.0f, at.y + size.y}, kTextGround);
    list->AddText(at, ink.colour, line.text.c_str());
  }
}

}  // namespace

void BarView::Start() {
  ImGui::CreateContext();
  ImGuiIO& io = ImGui::GetIO();
  io.IniFilename = nullptr;
  io.MouseDoubleClickTime = kDoubleClickSeconds;
  io.ConfigFlags |= ImGuiConfigFlags_NoMouseCursorChange;
  for (const KeyPair& pair : kKeys) io.KeyMap[pair.key] = pair.key;
  if (SDL_WasInit(SDL_INIT_VIDEO) != 0) {
    io.GetClipboardTextFn = GetClipboard;
    io.SetClipboardTextFn = SetClipboard;
  }
  StyleBars();
  // What ImGui asks of desktop OpenGL alone, polygon modes and restarts, are errors without effect on OpenGL ES.
  if (gl::HasContext()) glReady_ = ImGui_ImplOpenGL3_Init(gl::IsEs() ? "#version 300 es" : nullptr);
  io.Fonts->Build();
  started_ = true;
}

void BarView::Shutdown() {
  if (!started_) return;
  if (glReady_) ImGui_ImplOpenGL3_Shutdown();
  ImGui::DestroyContext();
  glReady_ = started_ = shown_ = drawable_ = clickedBar_ = false;
  for (auto* buttons : {&held_, &pressed_, &takenHere_}) buttons->reset();
  keysTaken_.clear();
  keysReleased_.clear();
  places_.clear();
}

void BarView::SetShown(bool shown) {
  if (shown && !started_) Start();
  shown_ = shown;
  drawable_ = false;
  if (!started_) return;
  ImGui::ClearActiveID();
  ImGui::ClosePopupsOverWindow(nullptr, false);
  std::fill(std::begin(ImGui::GetIO().KeysDown), std::end(ImGui::GetIO().KeysDown), false);
  held_.reset();
  pressed_.reset();
}

bool BarView::IsTyping() const { return shown_ && (clickedBar_ || ImGui::GetCurrentContext()->ActiveId != 0); }

bool BarView::IsOverBar(int x, int y) const {
  const ImGuiContext& context = *ImGui::GetCurrentContext();
  if (context.OpenPopupStack.Size > 0) return true;
  const ImVec2 point(static_cast<float>(x), static_cast<float>(y));
  return std::any_of(context.Windows.begin(), context.Windows.end(), [&](const ImGuiWindow* window) {
    return window->WasActive && !window->Hidden && (window->Flags & ImGuiWindowFlags_NoMouseInputs) == 0 &&
           window->OuterRectClipped.Contains(point);
  });
}

bool BarView::HandleEvent(const SDL_Event& event) {
  if (!started_) return false;
  switch (event.type) {
    case SDL_KEYDOWN:
    case SDL_KEYUP:
      return HandleKey(event.key);
    case SDL_TEXTINPUT:
      if (!IsTyping()) return false;
      ImGui::GetIO().AddInputCharactersUTF8(event.text.text);
      return true;
    case SDL_MOUSEMOTION:
      if (!shown_) return false;
      ImGui::GetIO().MousePos = {static_cast<float>(event.motion.x), static_cast<float>(event.motion.y)};
      return takenHere_.any();
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
      return HandleMouseButton(event.button);
    case SDL_MOUSEWHEEL:
      if (!shown_) return false;
      ImGui::GetIO().MouseWheel += static_cast<float>(event.wheel.y);
      return ImGui::GetIO().WantCaptureMouse;
    default:
      return false;
  }
}

// A key that went down on the bars repeats and comes up there, whatever has the keyboard by then and shown or not; one
// that went down for the game comes up for the game.
bool BarView::HandleKey(const SDL_KeyboardEvent& event) {
  const int key = event.keysym.sym;
  const auto taken = std::find(keysTaken_.begin(), keysTaken_.end(), key);
  if (event.type == SDL_KEYUP) {
    if (taken == keysTaken_.end()) return false;
    keysTaken_.erase(taken);
    keysReleased_.push_back(key);
    return true;
  }
  if (taken == keysTaken_.end()) {
    if (!IsTyping()) return false;
    if (event.repeat != 0) return true;
    keysTaken_.push_back(key);
  }
  SetKeyDown(key, true);
  return true;
}

bool BarView::HandleMouseButton(const SDL_MouseButtonEvent& event) {
  const int index = MouseIndex(event.button);
  if (index < 0) return false;
  const auto bit = static_cast<std::size_t>(index);
  const bool down = event.type == SDL_MOUSEBUTTONDOWN;
  if (!shown_ && down) return false;
  held_[bit] = down;
  if (!down) {
    const bool taken = takenHere_[bit];
    takenHere_[bit] = false;
    return taken;
  }
  ImGui::GetIO().MousePos = {static_cast<float>(event.x), static_cast<float>(event.y)};
  pressed_[bit] = true;
  takenHere_[bit] = IsOverBar(event.x, event.y);
  clickedBar_ = clickedBar_ || takenHere_[bit];
  return takenHere_[bit];
}

// A button that went down and up within one frame is down for that frame.
void BarView::FeedMouse() {
  for (std::size_t bit = 0; bit < kMouseButtons; ++bit) ImGui::GetIO().MouseDown[bit] = held_[bit] || pressed_[bit];
  pressed_.reset();
}

void BarView::FeedKeys() {
  ImGuiIO& io = ImGui::GetIO();
  const auto isHeld = [this](const char* name, int keyCode) {
    return Input::IsKeyDown(name) || std::find(keysTaken_.begin(), keysTaken_.end(), keyCode) != keysTaken_.end();
  };
  io.KeyShift = isHeld("shift", SDLK_LSHIFT) || isHeld("rshift", SDLK_RSHIFT);
  io.KeyCtrl = isHeld("ctrl", SDLK_LCTRL) || isHeld("rctrl", SDLK_RCTRL);
  io.KeyAlt = isHeld("alt", SDLK_LALT);
}

BarActions BarView::Run(std::span<const BarWindow> windows, std::span<const StageLine> lines, const BarLook& look,
                        int width, int height) {
  BarActions actions;
  if (!shown_) return actions;
  ImGuiIO& io = ImGui::GetIO();
  io.DisplaySize = {static_cast<float>(width), static_cast<float>(height)};
  io.DeltaTime = kFrameSeconds;
  io.FontGlobalScale = std::max(1.0f, static_cast<float>(static_cast<int>(io.DisplaySize.y / kScaleStep) + 1));
  FeedKeys();
  FeedMouse();
  if (glReady_) ImGui_ImplOpenGL3_NewFrame();
  ImGui::NewFrame();
  DrawLines(lines);
  for (const BarWindow& window : windows) ShowWindow(window, look, places_[window.title], actions);
  ImGui::Render();
  for (const int key : keysReleased_) SetKeyDown(key, false);
  keysReleased_.clear();
  clickedBar_ = false;
  drawable_ = true;
  return actions;
}

void BarView::Draw(int width, int height) {
  if (!shown_ || !drawable_ || !glReady_) return;
  const ImVec2 window = ImGui::GetIO().DisplaySize;
  const ImVec2 picture = {static_cast<float>(width), static_cast<float>(height)};
  const float scale = std::min(picture.x / window.x, picture.y / window.y);
  ImDrawData* data = ImGui::GetDrawData();
  data->FramebufferScale = {scale, scale};
  data->DisplaySize = {picture.x / scale, picture.y / scale};
  data->DisplayPos = {(window.x - data->DisplaySize.x) / 2.0f, (window.y - data->DisplaySize.y) / 2.0f};
  ImGui_ImplOpenGL3_RenderDrawData(data);
}
