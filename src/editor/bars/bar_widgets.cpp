#include "editor/bars/bar_widgets.h"

#include <imgui.h>
#include <imgui_internal.h>
#include <imgui_stdlib.h>

#include <algorithm>

namespace {

using Entry = TweakBar::Entry;

constexpr float kLabelGap = 6.0f;  // pixels at scale 1, between a value and its label
// Harbour colours: navy ground, brass for what is touched.
const ImVec4 kNavy = {0.106f, 0.165f, 0.255f, 0.93f};
const ImVec4 kDeepNavy = {0.07f, 0.11f, 0.18f, 1.0f};
const ImVec4 kSea = {0.247f, 0.639f, 0.71f, 0.75f};
const ImVec4 kBrass = {0.878f, 0.698f, 0.235f, 0.85f};
const ImVec4 kPaper = {0.969f, 0.945f, 0.89f, 1.0f};

// What a widget did to the copy of a value that it was given.
struct Touched {
  bool changed = false;
  bool done = false;
};

Touched Ended(bool changed) { return {changed, ImGui::IsItemDeactivatedAfterEdit()}; }

// Pulling at a number; a double click lets one type.
template <class T>
bool Pull(const Field& field, ImGuiDataType type, T* value, int count, const char* format) {
  constexpr bool kWhole = !std::is_same_v<T, float>;
  const auto low =
      static_cast<T>(std::clamp<double>(field.lowest, std::numeric_limits<T>::lowest(), std::numeric_limits<T>::max()));
  const auto high = static_cast<T>(
      std::clamp<double>(field.highest, std::numeric_limits<T>::lowest(), std::numeric_limits<T>::max()));
  // ImGui pulls without limits when both are the same, and within half the range of the type at most.
  const bool limited = high / 2 - low / 2 < std::numeric_limits<T>::max() / 2;
  return ImGui::DragScalarN("##value", type, value, count, kWhole ? 0.1f : FieldBar::kStep, limited ? &low : nullptr,
                            limited ? &high : nullptr, format, ImGuiSliderFlags_AlwaysClamp);
}

Touched Show(const Field& /*field*/, bool& value) {
  const bool changed = ImGui::Checkbox("##value", &value);
  return {changed, changed};
}

Touched Show(const Field& field, int& value) {
  if (field.choices.empty()) return Ended(Pull(field, ImGuiDataType_S32, &value, 1, "%d"));
  Touched touched;
  if (!ImGui::BeginCombo("##value", TextOf(field).c_str())) return touched;
  for (const auto& [number, name] : field.choices)
    if (ImGui::Selectable(std::string(name).c_str(), number == value)) {
      touched = {number != value, true};
      value = number;
    }
  ImGui::EndCombo();
  return touched;
}

Touched Show(const Field& field, std::uint32_t& value) {
  return Ended(Pull(field, ImGuiDataType_U32, &value, 1, "%u"));
}
Touched Show(const Field& field, float& value) { return Ended(Pull(field, ImGuiDataType_Float, &value, 1, "%.6g")); }
Touched Show(const Field& field, Vec3& value) { return Ended(Pull(field, ImGuiDataType_Float, &value.x, 3, "%.4g")); }
Touched Show(const Field& /*field*/, FieldColour& value) {
  return Ended(ImGui::ColorEdit3("##value", value.data(), ImGuiColorEditFlags_Float));
}

// The text that is being typed. It counts when the typing ends: a half-typed name is nobody's name.
struct Typing {
  ImGuiID id = 0;
  std::string text;
};

Touched Show(const Field& field, std::string& value) {
  static Typing typing;
  const ImGuiID id = ImGui::GetID("##value");
  // Typing that did not end in its field, because the bars were hidden or the field went, counts for nothing.
  const ImGuiContext& context = *ImGui::GetCurrentContext();
  if (typing.id == id && context.ActiveId != id && context.ActiveIdPreviousFrame != id) typing.id = 0;
  if (typing.id == id) value = typing.text;
  const bool changed = ImGui::InputText("##value", &value, ImGuiInputTextFlags_AutoSelectAll);
  if (field.whileTyping) return {changed, changed};
  if (changed) typing = {id, value};
  if (!ImGui::IsItemDeactivated()) return {};
  const bool typed = typing.id == id;
  if (typed) typing.id = 0;
  return {typed, typed};
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
      width = std::max(width, ImGui::CalcTextSize(entries[i].label.c_str()).x);
  }
  return width;
}

void ShowVariable(const TweakBar& bar, const Entry& entry, float labelWidth, BarActions& actions) {
  const Field& field = entry.field;
  FieldValue value = GetValue(field);
  const float gap = kLabelGap * ImGui::GetIO().FontGlobalScale;
  ImGui::SetNextItemWidth(-labelWidth - gap);
  if (field.readOnly) ImGui::BeginDisabled();
  const Touched touched = std::visit([&](auto& held) { return Show(field, held); }, value);
  if (field.readOnly) ImGui::EndDisabled();
  ImGui::SameLine(0.0f, gap);
  ImGui::TextUnformatted(entry.label.c_str());
  if (touched.changed || touched.done) actions.edits.push_back({&bar, entry.path, std::move(value), touched.done});
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

void ShowEntries(const TweakBar& bar, BarActions& actions) {
  const auto& entries = bar.GetEntries();
  std::vector<float> labelWidths = {MeasureLabels(entries, 0)};  // of the groups that are open here, innermost last
  for (std::size_t i = 0; i < entries.size();) {
    const Entry& entry = entries[i];
    ImGui::PushID(entry.path.c_str());
    bool open = true;
    switch (entry.kind) {
      case Entry::Kind::kGroup:
        open = ImGui::TreeNodeEx("##group", ImGuiTreeNodeFlags_DefaultOpen | ImGuiTreeNodeFlags_NoTreePushOnOpen, "%s",
                                 entry.label.c_str());
        if (open) {
          ImGui::Indent();
          labelWidths.push_back(MeasureLabels(entries, i + 1));
        }
        break;
      case Entry::Kind::kEndGroup:
        ImGui::Unindent();
        labelWidths.pop_back();
        break;
      case Entry::Kind::kVariable:
        ShowVariable(bar, entry, labelWidths.back(), actions);
        break;
      case Entry::Kind::kButton:
        if (ImGui::Button(entry.label.c_str(), {-1.0f, 0.0f})) actions.presses.push_back({&bar, entry.path});
        break;
      case Entry::Kind::kText:
        ImGui::TextWrapped("%s", entry.name.c_str());
        break;
    }
    ImGui::PopID();
    i = open ? i + 1 : SkipGroup(entries, i);
  }
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
  set(ImGuiCol_FrameBg, kDeepNavy);
  set(ImGuiCol_Text, kPaper);
  set(ImGuiCol_Button, kSea);
  set(ImGuiCol_Header, kSea);
  set(ImGuiCol_CheckMark, kBrass);
  for (const ImGuiCol_ touched : {ImGuiCol_ButtonHovered, ImGuiCol_ButtonActive, ImGuiCol_FrameBgHovered,
                                  ImGuiCol_FrameBgActive, ImGuiCol_HeaderHovered, ImGuiCol_HeaderActive})
    set(touched, kBrass);
}

void ShowBar(const TweakBar& bar, const BarPlace& place, BarActions& actions) {
  ImGui::SetNextWindowPos({place.x, place.y}, place.again ? ImGuiCond_Always : ImGuiCond_FirstUseEver);
  ImGui::SetNextWindowSizeConstraints({place.width, 0.0f}, {place.width, place.height});
  if (ImGui::Begin(bar.GetName().c_str(), nullptr, ImGuiWindowFlags_AlwaysAutoResize)) ShowEntries(bar, actions);
  ImGui::End();
}
