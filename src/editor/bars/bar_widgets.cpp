#include "editor/bars/bar_widgets.h"

#include <imgui.h>
#include <imgui_internal.h>
#include <imgui_stdlib.h>

#include <algorithm>
#include <cfloat>

#include "graphics/renderer.h"

namespace {

using Entry = TweakBar::Entry;

// Pixels at scale 1.
constexpr float kLabelGap = 6.0f;  // between a value and its label
constexpr float kBarWidth = 330.0f;
constexpr float kNarrowWidth = 220.0f;
constexpr float kMargin = 8.0f;
constexpr float kGap = 4.0f;  // between windows
constexpr float kTopHeight = 200.0f;
constexpr float kLeastHeight = 120.0f;  // of one that was moved down: it scrolls
constexpr float kListHeight = 190.0f;
constexpr float kPageHeight = 270.0f;
constexpr float kThumbnail = 58.0f;  // of a picture, each way
constexpr float kHintWidth = 320.0f;
constexpr float kHintDelay = 0.4f;  // seconds that the mouse rests first, so that it does not cover what one goes for
constexpr float kLeastValue = 110.0f;   // width of a value beside its label, which stands above it else
constexpr float kFlowingValue = 70.0f;  // width of a value in a line with others
constexpr float kSlider = 260.0f;       // width of one there
constexpr char kMixed[] = "mixed";
constexpr char kOpens[] = "...";  // a page to choose from
// Harbour colours: navy ground, brass for what is touched.
const ImVec4 kNavy = {0.106f, 0.165f, 0.255f, 0.93f};
const ImVec4 kDeepNavy = {0.07f, 0.11f, 0.18f, 1.0f};
const ImVec4 kSea = {0.247f, 0.639f, 0.71f, 0.75f};
const ImVec4 kBrass = {0.878f, 0.698f, 0.235f, 0.85f};
const ImVec4 kPaper = {0.969f, 0.945f, 0.89f, 1.0f};
const ImVec4 kCoral = {1.0f, 0.55f, 0.45f, 1.0f};  // what is wrong

// What a widget did to the copy of a value that it was given.
struct Touched {
  bool changed = false;
  bool done = false;
};

Touched Ended(bool changed) { return {changed, ImGui::IsItemDeactivatedAfterEdit()}; }

// Pulling at a number; a double click lets one type.
template <class T>
bool Pull(const Entry& entry, ImGuiDataType type, T* value, int count, const char* format) {
  const Field& field = entry.field;
  constexpr bool kWhole = !std::is_same_v<T, float>;
  const auto low =
      static_cast<T>(std::clamp<double>(field.lowest, std::numeric_limits<T>::lowest(), std::numeric_limits<T>::max()));
  const auto high = static_cast<T>(
      std::clamp<double>(field.highest, std::numeric_limits<T>::lowest(), std::numeric_limits<T>::max()));
  // ImGui pulls without limits when both are the same, and within half the range of the type at most.
  if (field.slides)
    return ImGui::SliderScalarN("##value", type, value, count, &low, &high, kWhole ? format : "%.2f",
                                ImGuiSliderFlags_AlwaysClamp);
  const bool limited = high / 2 - low / 2 < std::numeric_limits<T>::max() / 2;
  return ImGui::DragScalarN("##value", type, value, count, kWhole ? 0.1f : FieldBar::kStep, limited ? &low : nullptr,
                            limited ? &high : nullptr, entry.mixed ? kMixed : format, ImGuiSliderFlags_AlwaysClamp);
}

Touched Show(const Entry& entry, bool& value) {
  if (entry.mixed) ImGui::PushItemFlag(ImGuiItemFlags_MixedValue, true);
  const bool changed = ImGui::Checkbox("##value", &value);
  if (entry.mixed) ImGui::PopItemFlag();
  return {changed, changed};
}

Touched Show(const Entry& entry, int& value) {
  if (entry.field.choices.empty()) return Ended(Pull(entry, ImGuiDataType_S32, &value, 1, "%d"));
  Touched touched;
  if (!ImGui::BeginCombo("##value", entry.mixed ? kMixed : TextOf(entry.field).c_str())) return touched;
  for (const auto& [number, name] : entry.field.choices)
    if (ImGui::Selectable(std::string(name).c_str(), number == value)) {
      touched = {number != value, true};
      value = number;
    }
  ImGui::EndCombo();
  return touched;
}

Touched Show(const Entry& entry, std::uint32_t& value) {
  return Ended(Pull(entry, ImGuiDataType_U32, &value, 1, "%u"));
}
Touched Show(const Entry& entry, float& value) { return Ended(Pull(entry, ImGuiDataType_Float, &value, 1, "%.6g")); }
Touched Show(const Entry& entry, Vec3& value) { return Ended(Pull(entry, ImGuiDataType_Float, &value.x, 3, "%.4g")); }
Touched Show(const Entry& /*entry*/, FieldColour& value) {
  return Ended(ImGui::ColorEdit3("##value", value.data(), ImGuiColorEditFlags_Float));
}

// The text that is being typed. It counts when the typing ends: a half-typed name is nobody's name.
struct Typing {
  ImGuiID id = 0;
  std::string text;
};

Touched Show(const Entry& entry, std::string& value) {
  static Typing typing;
  const ImGuiID id = ImGui::GetID("##value");
  // Typing that did not end in its field, because the bars were hidden or the field went, counts for nothing.
  const ImGuiContext& context = *ImGui::GetCurrentContext();
  if (typing.id == id && context.ActiveId != id && context.ActiveIdPreviousFrame != id) typing.id = 0;
  if (entry.mixed) value.clear();
  if (typing.id == id) value = typing.text;
  const bool changed =
      ImGui::InputTextWithHint("##value", entry.mixed ? kMixed : "", &value, ImGuiInputTextFlags_AutoSelectAll);
  if (entry.field.whileTyping) return {changed, changed};
  if (changed) typing = {id, value};
  if (!ImGui::IsItemDeactivated()) return {};
  const bool typed = typing.id == id;
  if (typed) typing.id = 0;
  return {typed, typed};
}

float MeasureLabel(const Entry& entry) {
  const float label = ImGui::CalcTextSize(entry.label.c_str()).x;
  if (!entry.press) return label;
  return label + kLabelGap * ImGui::GetIO().FontGlobalScale + ImGui::CalcTextSize(kOpens).x +
         2.0f * ImGui::GetStyle().FramePadding.x;
}

// The width of the longest label among the variables of the group that begins at `begin`, inner groups apart. A label
// beside a box to tick has room anyway.
float MeasureLabels(const std::vector<Entry>& entries, std::size_t begin) {
  float width = 0.0f;
  int depth = 0;
  for (std::size_t i = begin; i < entries.size() && depth >= 0; ++i) {
    if (entries[i].kind == Entry::Kind::kGroup) ++depth;
    if (entries[i].kind == Entry::Kind::kEndGroup) --depth;
    if (entries[i].kind == Entry::Kind::kVariable && depth == 0 &&
        !std::holds_alternative<bool*>(entries[i].field.target))
      width = std::max(width, MeasureLabel(entries[i]));
  }
  return width;
}

// Not over what is being typed or pulled at: found things stand below.
void ShowHint(const Entry& entry) {
  if (entry.hint.empty() || !ImGui::IsItemHovered() || ImGui::IsItemActive()) return;
  if (ImGui::GetCurrentContext()->HoveredIdTimer < kHintDelay) return;
  ImGui::BeginTooltip();
  ImGui::PushTextWrapPos(kHintWidth * ImGui::GetIO().FontGlobalScale);
  ImGui::TextUnformatted(entry.hint.c_str());
  ImGui::PopTextWrapPos();
  ImGui::EndTooltip();
}

float FlowingValue(const Entry& entry) { return entry.field.slides ? kSlider : kFlowingValue; }

// A value that can be chosen by sight has a button for it, behind the label.
void ShowLabel(const TweakBar& bar, const Entry& entry, float gap, BarActions& actions) {
  ImGui::TextUnformatted(entry.label.c_str());
  if (!entry.press) return;
  ImGui::SameLine(0.0f, gap);
  if (ImGui::SmallButton(kOpens)) actions.presses.push_back({&bar, entry.path});
}

void ShowFault(const Entry& entry) {
  if (entry.fault.empty()) return;
  ImGui::PushStyleColor(ImGuiCol_Text, kCoral);
  ImGui::TextWrapped("%s", entry.fault.c_str());
  ImGui::PopStyleColor();
}

// `labelWidth`: of the longest label beside it; 0 in a line with others.
void ShowVariable(const TweakBar& bar, const Entry& entry, float labelWidth, BarActions& actions) {
  FieldValue value = GetValue(entry.field);
  const float scale = ImGui::GetIO().FontGlobalScale;
  const float gap = kLabelGap * scale;
  const bool above = labelWidth > 0.0f && !std::holds_alternative<bool>(value) &&
                     ImGui::GetContentRegionAvail().x - labelWidth - gap < kLeastValue * scale;
  if (above) ShowLabel(bar, entry, gap, actions);
  ImGui::SetNextItemWidth(above ? -FLT_MIN : labelWidth > 0.0f ? -labelWidth - gap : FlowingValue(entry) * scale);
  if (entry.field.readOnly) ImGui::BeginDisabled();
  const Touched touched = std::visit([&](auto& held) { return Show(entry, held); }, value);
  if (entry.field.readOnly) ImGui::EndDisabled();
  if (entry.fault.empty()) ShowHint(entry);  // it would lie over the fault
  if (!above) {
    ImGui::SameLine(0.0f, gap);
    ShowLabel(bar, entry, gap, actions);
  }
  ShowFault(entry);
  if (touched.changed || touched.done) actions.edits.push_back({&bar, entry.path, std::move(value), touched.done});
}

// A picture's first row is the top of its texture, which is where v is 1.
const ImVec2 kUpperLeft = {0.0f, 1.0f};
const ImVec2 kLowerRight = {1.0f, 0.0f};

ImTextureID TextureOf(const Entry& entry) {
  const GLuint texture = entry.picture.empty() ? 0 : GetRenderer().GetTexture(entry.picture);
  return reinterpret_cast<ImTextureID>(static_cast<std::intptr_t>(texture));
}

// As a selectable line, but of as many lines as it needs.
bool SelectableText(const Entry& entry) {
  const ImVec2 at = ImGui::GetCursorScreenPos();
  const float width = ImGui::GetContentRegionAvail().x;
  const ImVec2 size = {0.0f, ImGui::CalcTextSize(entry.label.c_str(), nullptr, false, width).y};
  const bool pressed = ImGui::Selectable("##row", entry.marked, ImGuiSelectableFlags_AllowDoubleClick, size);
  ImGui::GetWindowDrawList()->AddText(ImGui::GetFont(), ImGui::GetFontSize(), at, ImGui::GetColorU32(ImGuiCol_Text),
                                      entry.label.c_str(), nullptr, width);
  return pressed;
}

// Rows of a list stand under each other, with a picture or without.
void ShowRow(const TweakBar& bar, const Entry& entry, BarActions& actions) {
  if (const float size = ImGui::GetTextLineHeight(); TextureOf(entry) != nullptr) {
    ImGui::Image(TextureOf(entry), {size, size}, kUpperLeft, kLowerRight);
    ImGui::SameLine();
  } else if (entry.indented) {
    ImGui::Dummy({size, size});
    ImGui::SameLine();
  }
  if (SelectableText(entry)) {
    const bool twice = ImGui::IsMouseDoubleClicked(ImGuiMouseButton_Left) && !entry.onTwice.empty();
    const bool shift = ImGui::GetIO().KeyShift && !entry.onShift.empty();
    actions.presses.push_back({&bar, twice ? entry.onTwice : shift ? entry.onShift : entry.path});
  }
  ShowHint(entry);
}

float FlowingWidth(const Entry& entry) {
  const float scale = ImGui::GetIO().FontGlobalScale;
  const float padding = 2.0f * ImGui::GetStyle().FramePadding.x;
  const float label = ImGui::CalcTextSize(entry.label.c_str()).x;
  if (entry.kind == Entry::Kind::kVariable) return label + (kLabelGap + FlowingValue(entry)) * scale;
  return padding + (entry.picture.empty() ? label : kThumbnail * scale);
}

// Beside the one before it, if the line still has room for it.
void Flow(const Entry& entry) {
  const ImGuiStyle& style = ImGui::GetStyle();
  const float width = FlowingWidth(entry);
  const float right = ImGui::GetWindowPos().x + ImGui::GetWindowContentRegionMax().x;
  if (ImGui::GetItemRectMax().x + style.ItemSpacing.x + width <= right) ImGui::SameLine();
}

bool PictureButton(const Entry& entry) {
  const float size = kThumbnail * ImGui::GetIO().FontGlobalScale;
  if (TextureOf(entry) == nullptr) return ImGui::Button(entry.label.c_str(), {0.0f, size});
  return ImGui::ImageButton(TextureOf(entry), {size, size}, kUpperLeft, kLowerRight);
}

void ShowButton(const TweakBar& bar, const Entry& entry, bool flowing, BarActions& actions) {
  if (entry.row) return ShowRow(bar, entry, actions);
  if (entry.marked) ImGui::PushStyleColor(ImGuiCol_Button, kBrass);
  const bool pressed =
      entry.picture.empty() ? ImGui::Button(entry.label.c_str(), {flowing ? 0.0f : -1.0f, 0.0f}) : PictureButton(entry);
  if (entry.marked) ImGui::PopStyleColor();
  if (pressed) actions.presses.push_back({&bar, entry.path});
  ShowHint(entry);
}

// The place after the end of the group that begins at `begin`.
std::size_t SkipGroup(const std::vector<Entry>& entries, std::size_t begin) {
  int depth = 1;
  std::size_t at = begin + 1;
  for (; at < entries.size() && depth > 0; ++at) {
    if (entries[at].kind == Entry::Kind::kGroup) ++depth;
    if (entries[at].kind == Entry::Kind::kEndGroup) --depth;
  }
  return at;
}

class EntryWalk {
 public:
  EntryWalk(const TweakBar& bar, bool flowing, BarActions& actions) : bar_(bar), flowing_(flowing), actions_(actions) {}

  void Run() {
    const auto& entries = bar_.GetEntries();
    ImGui::PushID(bar_.GetName().c_str());
    for (std::size_t i = 0; i < entries.size();) {
      bool open = true;
      if (!entries[i].hidden) {
        ImGui::PushID(entries[i].path.c_str());
        open = Show(i);
        ImGui::PopID();
      }
      i = open ? i + 1 : SkipGroup(entries, i);
    }
    ImGui::PopID();
  }

 private:
  // False for a group that is folded.
  bool Show(std::size_t index) {
    const Entry& entry = bar_.GetEntries()[index];
    const bool beside =
        flowing_ && !entry.row && (entry.kind == Entry::Kind::kButton || entry.kind == Entry::Kind::kVariable);
    if (beside && afterBeside_) Flow(entry);
    afterBeside_ = beside;
    switch (entry.kind) {
      case Entry::Kind::kGroup:
        return BeginGroup(index);
      case Entry::Kind::kEndGroup:
        ImGui::Unindent();
        labelWidths_.pop_back();
        break;
      case Entry::Kind::kVariable:
        ShowVariable(bar_, entry, flowing_ ? 0.0f : labelWidths_.back(), actions_);
        break;
      case Entry::Kind::kButton:
        ShowButton(bar_, entry, flowing_, actions_);
        break;
      case Entry::Kind::kText:
        ImGui::TextWrapped("%s", entry.name.c_str());
        break;
    }
    return true;
  }

  bool BeginGroup(std::size_t index) {
    const bool open = ImGui::TreeNodeEx("##group", ImGuiTreeNodeFlags_DefaultOpen | ImGuiTreeNodeFlags_NoTreePushOnOpen,
                                        "%s", bar_.GetEntries()[index].label.c_str());
    ShowHint(bar_.GetEntries()[index]);
    if (!open) return false;
    ImGui::Indent();
    labelWidths_.push_back(MeasureLabels(bar_.GetEntries(), index + 1));
    return true;
  }

  const TweakBar& bar_;
  const bool flowing_;
  BarActions& actions_;
  bool afterBeside_ = false;
  std::vector<float> labelWidths_ = {MeasureLabels(bar_.GetEntries(), 0)};  // of the open groups, innermost last
};

// Where a window goes by itself. Between the bars at the sides stand the three others, one below another.
BarPlace PlaceOf(const BarWindow& window, const BarLook& look) {
  using Site = BarWindow::Site;
  const ImGuiIO& io = ImGui::GetIO();
  const float scale = io.FontGlobalScale;
  const float side =
      std::min((look.narrow ? kNarrowWidth : kBarWidth) * scale, (io.DisplaySize.x - 3.0f * kMargin) / 2.0f);
  const float inner = kMargin + side + kGap;
  const float bottom = io.DisplaySize.y - kMargin;
  const float between = std::max(io.DisplaySize.x - 2.0f * inner, 1.0f);
  switch (window.site) {
    case Site::kLeft:
      return {kMargin, kMargin, side, bottom - kMargin};
    case Site::kRight:
      return {io.DisplaySize.x - kMargin - side, kMargin, side, bottom - kMargin};
    case Site::kTop:
      return {inner, kMargin, between, kTopHeight * scale};
    case Site::kBottom:
      return {inner, bottom - kListHeight * scale, between, kListHeight * scale};
    case Site::kCard:
      return {inner, kMargin + kTopHeight * scale + kGap, between, bottom - kMargin - kTopHeight * scale - kGap};
    case Site::kMiddle:
      return {inner, bottom - (kListHeight + kPageHeight) * scale - kGap, between, kPageHeight * scale};
  }
  return {};
}

}  // namespace

void StyleBars() {
  ImGui::StyleColorsDark();
  ImGuiStyle& style = ImGui::GetStyle();
  style.WindowRounding = 6.0f;
  style.FrameRounding = 3.0f;
  style.FramePadding = {4.0f, 2.0f};
  style.ItemSpacing = {6.0f, 3.0f};
  style.IndentSpacing = 10.0f;
  const auto set = [&](ImGuiCol_ what, const ImVec4& colour) { style.Colors[what] = colour; };
  set(ImGuiCol_WindowBg, kNavy);
  set(ImGuiCol_PopupBg, kNavy);
  set(ImGuiCol_TitleBg, kDeepNavy);
  set(ImGuiCol_TitleBgActive, kDeepNavy);
  set(ImGuiCol_TitleBgCollapsed, kDeepNavy);
  set(ImGuiCol_FrameBg, kDeepNavy);
  set(ImGuiCol_Text, kPaper);
  set(ImGuiCol_Button, kSea);
  set(ImGuiCol_Header, kSea);
  set(ImGuiCol_CheckMark, kBrass);
  for (const ImGuiCol_ touched : {ImGuiCol_ButtonHovered, ImGuiCol_ButtonActive, ImGuiCol_FrameBgHovered,
                                  ImGuiCol_FrameBgActive, ImGuiCol_HeaderHovered, ImGuiCol_HeaderActive})
    set(touched, kBrass);
}

// A window that nobody has moved goes where it belongs when the picture or the bars change their size.
void ShowWindow(const BarWindow& window, const BarLook& look, BarPlace& place, BarActions& actions) {
  const BarPlace home = PlaceOf(window, look);
  const bool atHome = place.x < 0.0f || !place.moved;
  const bool resized = place.width != home.width || place.height != home.height;
  if (atHome) ImGui::SetNextWindowPos({home.x, home.y});
  if (place.folded != look.folded) ImGui::SetNextWindowCollapsed(look.folded);
  const bool fixed = window.site == BarWindow::Site::kBottom || window.site == BarWindow::Site::kMiddle;
  const float below = ImGui::GetIO().DisplaySize.y - kMargin - place.y;
  const float most = place.moved ? std::clamp(below, std::min(kLeastHeight, home.height), home.height) : home.height;
  ImGui::SetNextWindowSizeConstraints({home.width, fixed ? most : 0.0f}, {home.width, most});
  const ImGuiWindowFlags flags = ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoFocusOnAppearing;
  if (ImGui::Begin(window.title.c_str(), nullptr, flags))
    for (const TweakBar* bar : window.bars) EntryWalk(*bar, window.flowing, actions).Run();
  const ImVec2 at = ImGui::GetWindowPos();
  const bool pulled = ImGui::GetCurrentContext()->MovingWindow == ImGui::GetCurrentWindow() &&
                      ImGui::IsMouseDragging(ImGuiMouseButton_Left);
  place = {at.x, at.y, home.width, home.height, look.folded, place.moved || pulled};
  if (place.moved && resized) {
    place.x = std::clamp(at.x, 0.0f, std::max(0.0f, ImGui::GetIO().DisplaySize.x - home.width));
    place.y = std::clamp(at.y, 0.0f, std::max(0.0f, ImGui::GetIO().DisplaySize.y - kMargin));
    ImGui::SetWindowPos({place.x, place.y});
  }
  ImGui::End();
}
