#include "automation/AutomationSession.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <optional>

#include "app/VC/PopupMenu.h"
#include "app/core/AppData.h"
#include "app/core/BasicMethod.h"
#include "app/core/Constant.h"
#include "automation/CollectionTouch.h"
#include "automation/TreeWriter.h"
#include "platform/uikit/UISlider.h"
#include "platform/ads/FullScreenAdStage.h"
#include "platform/av/AVPlayer.h"
#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/NSLog.h"
#include "platform/uikit/UIActivityViewController.h"
#include "platform/uikit/UIAlertController.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIDocumentPickerViewController.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UIGestureRecognizer.h"
#include "platform/uikit/UserNotice.h"

namespace nimbrel {

using json = nlohmann::json;

namespace {

json failure(const std::string& why) {
  return {{"ok", false}, {"error", why}};
}

json success() {
  return {{"ok", true}};
}

json recordJson(const File& f) {
  return {{"url", f.url.absoluteString()},
          {"openingDate", f.openingDate.timeIntervalSinceReferenceDate},
          {"filetype", std::string(rawValue(f.filetype))}};
}

json plistJson(const PlistValue& v) {
  switch (v.type()) {
    case PlistValue::Type::boolean: return v.boolean();
    case PlistValue::Type::integer: return v.integer();
    case PlistValue::Type::real: return v.real();
    case PlistValue::Type::string: return v.string();
    case PlistValue::Type::date: return {{"$date", v.date().timeIntervalSinceReferenceDate}};
    case PlistValue::Type::data: {
      json out = {{"$data", Base64::encode(v.data())}};
      auto decoded = decodeFiles(v.data());
      if (auto* files = std::get_if<std::vector<File>>(&decoded)) {
        json records = json::array();
        for (const auto& f : *files) records.push_back(recordJson(f));
        out["$files"] = records;
      }
      return out;
    }
    case PlistValue::Type::array: {
      json out = json::array();
      for (const auto& e : v.array()) out.push_back(plistJson(e));
      return out;
    }
    case PlistValue::Type::dictionary: {
      json out = json::object();
      for (const auto& [k, e] : v.dictionary()) out[k] = plistJson(e);
      return out;
    }
  }
  return nullptr;
}

// The type every known field must have; a request with another is refused whole, before it acts.
enum class FieldType { string, boolean, number, integer, integerOrNull };

struct FieldRule {
  const char* key;
  FieldType type;
};

constexpr FieldRule kFieldRules[] = {
    {"op", FieldType::string},         {"selector", FieldType::string},   {"sender", FieldType::string},
    {"screen", FieldType::string},     {"collection", FieldType::string}, {"recognizer", FieldType::string},
    {"action", FieldType::string},     {"pick", FieldType::string},       {"path", FieldType::string},
    {"dismiss", FieldType::boolean},   {"cancel", FieldType::boolean},    {"seconds", FieldType::number},
    {"x", FieldType::number},          {"y", FieldType::number},          {"value", FieldType::number},
    {"index", FieldType::integer},     {"row", FieldType::integerOrNull}, {"activity", FieldType::string},
    {"folder", FieldType::string},
};

std::optional<std::string> wrongField(const json& request) {
  for (const auto& rule : kFieldRules) {
    auto it = request.find(rule.key);
    if (it == request.end()) continue;
    switch (rule.type) {
      case FieldType::string:
        if (!it->is_string()) return "\"" + std::string(rule.key) + "\" must be a string";
        break;
      case FieldType::boolean:
        if (!it->is_boolean()) return "\"" + std::string(rule.key) + "\" must be true or false";
        break;
      case FieldType::number:
        if (!it->is_number()) return "\"" + std::string(rule.key) + "\" must be a number";
        break;
      case FieldType::integer:
        if (!it->is_number_integer()) return "\"" + std::string(rule.key) + "\" must be a whole number";
        break;
      case FieldType::integerOrNull:
        if (!it->is_number_integer() && !it->is_null()) return "\"" + std::string(rule.key) + "\" must be a number or null";
        break;
    }
  }
  return std::nullopt;
}

// What stands between a person and the screens: touches and actions wait for its answer.
std::optional<std::string> modalInTheWay() {
  if (TreeWriter::currentAlert()) return "an alert is showing: answer it with {\"op\":\"alert\"} first";
  if (TreeWriter::currentPicker()) return "a document picker is showing: answer it with {\"op\":\"picker\"} first";
  return std::nullopt;
}

bool flag(const json& request, const char* key) {
  auto it = request.find(key);
  return it != request.end() && it->is_boolean() && it->get<bool>();
}

std::string stringField(const json& request, const char* key) {
  auto it = request.find(key);
  if (it == request.end() || !it->is_string()) return {};
  return it->get<std::string>();
}

}  // namespace

AutomationSession::AutomationSession(AutomationHost& host) : host_(host) {
  std::weak_ptr<LogBuffer> buffer = log_;
  LogSink::install([buffer](std::string_view line) {
    if (auto b = buffer.lock()) {
      std::lock_guard lock(b->mutex);
      b->lines.emplace_back(line);
    }
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fputc('\n', stderr);
  });
  // The platform's diagnostics are on standard error already; the log keeps them as well.
  Diagnostics::listen([buffer](std::string_view line) {
    if (auto b = buffer.lock()) {
      std::lock_guard lock(b->mutex);
      b->lines.emplace_back(line);
    }
  });
}

AutomationSession::~AutomationSession() {
  Diagnostics::listen(nullptr);
  LogSink::install(nullptr);
}

std::string AutomationSession::handleLine(const std::string& line) {
  json request = json::parse(line, nullptr, false);
  json response;
  if (request.is_discarded()) {
    response = failure("the request is not valid JSON");
  } else if (!request.is_object()) {
    response = failure("the request must be a JSON object");
  } else {
    try {
      response = handle(request);
    } catch (const json::exception& e) {
      // A request shaped in a way no check above foresaw is still only a bad request.
      response = failure(std::string("the request could not be read: ") + e.what());
    }
  }
  return response.dump(-1, ' ', false, json::error_handler_t::replace);
}

json AutomationSession::handle(const json& request) {
  if (auto why = wrongField(request)) return failure(*why);
  std::string op = stringField(request, "op");
  if (op.empty()) return failure("the request has no \"op\"");
  if (op == "action" || op == "tap" || op == "longPress" || op == "gesture" || op == "menu") {
    if (auto why = modalInTheWay()) return failure(*why);
  }
  if (op == "notice") {
    if (!flag(request, "dismiss")) return failure("notice supports {\"dismiss\": true}");
    if (!UserNotice::dismiss()) return failure("no notice is showing");
    return success();
  }
  if (op == "tree") return TreeWriter::tree(host_.elapsed());
  if (op == "action") return action(request);
  if (op == "alert") return alert(request);
  if (op == "tap") return touch(request, false);
  if (op == "longPress") return touch(request, true);
  if (op == "gesture") return gesture(request);
  if (op == "menu") return menu(request);
  if (op == "sheet") return sheet(request);
  if (op == "picker") return picker(request);
  if (op == "ad") return ad(request);
  if (op == "advance") {
    auto it = request.find("seconds");
    if (it == request.end() || !it->is_number() || it->get<double>() < 0) {
      return failure("advance needs a non-negative number of seconds");
    }
    host_.advance(it->get<double>());
    return {{"ok", true}, {"now", host_.elapsed()}};
  }
  if (op == "idle") {
    host_.settle();
    return {{"ok", true}, {"now", host_.elapsed()}};
  }
  if (op == "background") {
    UIApplication::sharedApplication().enterBackground();
    host_.settle();
    return success();
  }
  if (op == "activate") {
    UIApplication::sharedApplication().becomeActive();
    host_.settle();
    return success();
  }
  if (op == "prefs") return prefs();
  if (op == "state") return state();
  if (op == "log") return log();
  if (op == "paths") {
    json out = host_.paths();
    out["ok"] = true;
    return out;
  }
  if (op == "players") {
    json players = json::array();
    for (const auto& player : AVPlayer::livePlayers()) {
      players.push_back({{"url", player->currentItem()->url().absoluteString()},
                         {"playing", player->isPlaying()},
                         {"position", player->currentTime()}});
    }
    return {{"ok", true}, {"players", players}};
  }
  if (op == "sdk") return {{"ok", true}, {"calls", host_.sdkCalls()}};
  if (op == "screenshot") {
    std::string path = stringField(request, "path");
    if (path.empty()) return failure("screenshot needs a \"path\"");
    if (auto why = host_.screenshot(path)) return failure(*why);
    return success();
  }
  return failure("unknown operation \"" + op + "\"");
}

json AutomationSession::action(const json& request) {
  std::string selector = stringField(request, "selector");
  if (selector.empty()) return failure("action needs a \"selector\"");
  std::string screenName = stringField(request, "screen");
  auto screen = screenName.empty() ? TreeWriter::topScreen() : TreeWriter::screenWithId(screenName);
  if (!screen) {
    return failure(screenName.empty() ? "no screen is showing" : "no screen \"" + screenName + "\" is showing");
  }
  std::shared_ptr<NSObject> sender;
  std::string senderName = stringField(request, "sender");
  if (!senderName.empty()) {
    sender = screen->outlet(senderName);
    if (!sender) return failure(TreeWriter::screenId(*screen) + " has no outlet \"" + senderName + "\"");
  }
  if (!screen->respondsToSelector(selector)) {
    return failure(TreeWriter::screenId(*screen) + " has no action \"" + selector + "\"");
  }
  if (auto value = request.find("value"); value != request.end()) {
    auto slider = std::dynamic_pointer_cast<UISlider>(sender);
    if (!slider) return failure("\"value\" needs a slider as \"sender\"");
    if (!value->is_number()) return failure("\"value\" must be a number");
    // The slider clamps to its own range; a double beyond a float's is brought within it first,
    // since converting it as it is would be undefined.
    const double limit = std::numeric_limits<float>::max();
    slider->setValue(static_cast<float>(std::clamp(value->get<double>(), -limit, limit)), false);
  }
  screen->performAction(selector, sender);
  host_.settle();
  return success();
}

json AutomationSession::touch(const json& request, bool longPress) {
  std::string screenName = stringField(request, "screen");
  auto screen = screenName.empty() ? TreeWriter::topScreen() : TreeWriter::screenWithId(screenName);
  if (!screen) return failure("no screen is showing");
  std::string name = stringField(request, "collection");
  auto collection = std::dynamic_pointer_cast<UICollectionView>(screen->outlet(name));
  if (!collection) return failure(TreeWriter::screenId(*screen) + " has no collection \"" + name + "\"");
  auto rowField = request.find("row");
  if (rowField == request.end()) return failure("a touch needs a \"row\" (a number, or null for the gap)");
  std::optional<long> row;
  if (rowField->is_number_integer()) {
    row = rowField->get<long>();
  } else if (!rowField->is_null()) {
    return failure("\"row\" must be a number or null");
  }
  if (auto why = touchCollection(*collection, row, longPress)) return failure(*why);
  host_.settle();
  return success();
}

// {"op": "gesture", "recognizer": OUTLET, "x": X, "y": Y[, "screen": ID]}: a touch that the screen's
// recogniser answers; one that waits for another's failure acts on the platform's clock.
json AutomationSession::gesture(const json& request) {
  std::string screenName = stringField(request, "screen");
  auto screen = screenName.empty() ? TreeWriter::topScreen() : TreeWriter::screenWithId(screenName);
  if (!screen) return failure("no screen is showing");
  std::string name = stringField(request, "recognizer");
  auto recognizer = std::dynamic_pointer_cast<UIGestureRecognizer>(screen->outlet(name));
  if (!recognizer) return failure(TreeWriter::screenId(*screen) + " has no recognizer \"" + name + "\"");
  auto x = request.find("x"), y = request.find("y");
  if (x == request.end() || y == request.end() || !x->is_number() || !y->is_number()) {
    return failure("a gesture needs \"x\" and \"y\" (numbers)");
  }
  if (!recognizer->isEnabled() || !recognizer->view()) return failure("the recognizer \"" + name + "\" is not active");
  if (auto why = host_.gesture(*recognizer, {x->get<double>(), y->get<double>()})) return failure(*why);
  host_.settle();
  return success();
}

json AutomationSession::menu(const json& request) {
  if (popupMenuEntries().empty()) return failure("no menu is open");
  if (flag(request, "dismiss")) {
    dismissPopupMenu();
  } else {
    auto index = request.find("index");
    if (index == request.end() || !index->is_number_integer()) return failure("menu needs an \"index\" or \"dismiss\"");
    long i = index->get<long>();
    if (i < 0 || i >= static_cast<long>(popupMenuEntries().size())) return failure("the menu has no entry " + std::to_string(i));
    pressPopupMenuEntry(i);
  }
  host_.settle();
  return success();
}

json AutomationSession::alert(const json& request) {
  auto current = TreeWriter::currentAlert();
  if (!current) return failure("no alert is showing");
  std::string title = stringField(request, "action");
  if (!current->pressActionWithTitle(title)) return failure("the alert has no action \"" + title + "\"");
  host_.settle();
  return success();
}

json AutomationSession::sheet(const json& request) {
  auto current = TreeWriter::currentSheet();
  if (!current) return failure("no share sheet is showing");
  if (request.contains("activity")) {
    std::string name = stringField(request, "activity");
    std::optional<std::string> folder;
    if (request.contains("folder")) folder = stringField(request, "folder");
    if (!current->performActivity(name, folder)) {
      return failure("the sheet offers no activity \"" + name +
                     "\" or it could not start (headless, \"Save to…\" needs a \"folder\")");
    }
    host_.settle();
    return success();
  }
  if (!flag(request, "dismiss")) return failure("sheet supports {\"dismiss\": true} or {\"activity\": NAME}");
  current->close(false);
  host_.settle();
  return success();
}

// {"op": "picker", "pick": NAME} hands over a file the picker offers; {"op": "picker", "cancel": true}.
json AutomationSession::picker(const json& request) {
  auto current = TreeWriter::currentPicker();
  if (!current) return failure("no document picker is showing");
  if (flag(request, "cancel")) {
    current->cancel();
  } else {
    std::string name = stringField(request, "pick");
    if (name.empty()) return failure("picker needs a \"pick\" (a name it offers) or \"cancel\": true");
    auto picked = current->pickNamed(name);
    if (!picked) return failure(picked.error());
  }
  host_.settle();
  return success();
}

json AutomationSession::ad(const json& request) {
  if (!flag(request, "dismiss")) return failure("ad supports {\"dismiss\": true}");
  if (!FullScreenAdStage::shared().close()) return failure("no full-screen ad is showing");
  host_.settle();
  return success();
}

json AutomationSession::prefs() {
  json values = json::object();
  for (const auto& [key, value] : Constant::userDefaults().dictionaryRepresentation()) {
    values[key] = plistJson(value);
  }
  return {{"ok", true}, {"values", values}};
}

json AutomationSession::state() {
  auto data = AppData::shared();
  json recents = json::array();
  for (const auto& f : data->recentFiles) recents.push_back(recordJson(f));
  json favourites = json::array();
  for (const auto& f : data->FavouriteFiles) favourites.push_back(recordJson(f));
  return {{"ok", true},
          {"recentFiles", recents},
          {"FavouriteFiles", favourites},
          {"usedSpace", data->usedSpace},
          {"videoSpace", data->videoSpace},
          {"audioSpace", data->audioSpace},
          {"imagesSpace", data->imagesSpace.bytes},
          {"otherSpace", data->otherSpace},
          {"freeSpace", data->freeSpace}};
}

json AutomationSession::log() {
  std::vector<std::string> lines;
  {
    std::lock_guard lock(log_->mutex);
    lines.swap(log_->lines);
  }
  return {{"ok", true}, {"lines", lines}};
}

}  // namespace nimbrel
