#pragma once

#include <filesystem>
#include <memory>

#include "platform/Application.h"

namespace pellar {

class Accessibility;
class Alerts;
class EventMonitors;
class EventTaps;
class HttpClient;
class LoginItem;
class MainLoop;
class MenuPresenter;
class PanelFactory;
class Pasteboard;
class PropertyLists;
class ScreenList;
class ScriptRunner;
class StatusBar;
class UserNotifications;
class Windows;
class Workspace;

// Where the program keeps its files. Absolute paths; the folders may not exist yet.
struct UserFolders {
  std::filesystem::path home;
  std::filesystem::path applicationSupport;  // holds Pellar/state.json
  std::filesystem::path logFile;
};

// What the application needs from its operating system, gathered by the process entry. Every reference
// outlives the application, or belongs to `owner`.
struct Platform {
  MainLoop& mainLoop;
  Accessibility& accessibility;
  Workspace& workspace;
  ScreenList& screens;
  PanelFactory& panels;
  EventMonitors& eventMonitors;
  EventTaps& eventTaps;
  MenuPresenter& menus;
  Alerts& alerts;
  Pasteboard& pasteboard;
  PropertyLists& propertyLists;
  ScriptRunner& scripts;
  StatusBar& statusBar;
  Windows& windows;
  LoginItem& loginItem;
  HttpClient& httpClient;
  UserNotifications& notifications;
  Application& application;
  BundleInfo bundle;
  UserFolders folders;
  // Kept by every copy, which work under way may have after the application's end; null where there is none.
  std::shared_ptr<const void> owner = nullptr;
};

}  // namespace pellar
