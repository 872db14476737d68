// The bar to choose from by sight: pictures as thumbnails, scripts, components and archetypes each with a line of what
// it is.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "editor/bars/tweak_bar.h"
#include "editor/files/picture_faults.h"

class Browser {
 public:
  enum class Page { kPictures, kScripts, kComponents, kArchetypes };

  static constexpr std::size_t kPerSheet = 32;  ///< pictures that are loaded and shown at a time

  using Chooser = std::function<void(Page page, const std::string& name)>;

  /// Anew; `choose` outlives the entries.
  void Fill(const Chooser& choose);
  const TweakBar& GetBar() const { return bar_; }
  bool IsShown() const { return shown_; }
  void Toggle();
  /// Shows the page; what is chosen there is meant for the variable of that path on the bars.
  void Open(Page page, const std::string& target);
  void Close() { shown_ = false; }
  /// The variable that the page was opened for; empty for none.
  const std::string& GetTarget() const { return target_; }
  void Reset();

 private:
  struct Choice {
    std::string name;
    std::string meaning;
    std::string picture = {};
  };

  void Read();
  void ReadArchetypes();
  void FillPages();
  void FillRow(const Choice& choice, const Chooser& choose);
  void LoadOnce(const std::string& picture);
  bool CanBeSeen(const std::string& picture);
  void FillPictures(const std::vector<const Choice*>& found, const Chooser& choose);

  TweakBar bar_{"browse"};
  bool shown_ = false;
  Page page_ = Page::kPictures;
  std::string target_;
  std::string filter_;
  std::size_t sheet_ = 0;
  std::vector<Choice> choices_;  // of the page, read when it was opened
  std::set<std::string> tried_;  // pictures that were loaded to be shown; a damaged one says so once a reading
  PictureFaults faults_;
};

/// Lets the variables of the bar that a page can show values for open it. `root`: of their paths, the bar's name.
void OfferPages(TweakBar& bar, const std::string& root, Browser& browser);
