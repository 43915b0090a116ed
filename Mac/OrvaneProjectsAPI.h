// Client of the review service's project API: one session of one user.
//
// Every call blocks its caller: get and post requests for 30 seconds at most, the upload without limit. All calls share
// the one transfer handle of HttpRequest, so none may overlap another. What has no tag: [main-thread] [export-open]
#pragma once

#include <string>

#include "HttpRequest.h"

class OrvaneProjectsAPI {
 public:
  /// Starts an empty session and creates the shared transfer handle.
  OrvaneProjectsAPI();

  /// Releases the shared transfer handle.
  ~OrvaneProjectsAPI();

  OrvaneProjectsAPI(const OrvaneProjectsAPI&) = delete;
  OrvaneProjectsAPI& operator=(const OrvaneProjectsAPI&) = delete;

  /// Logs in, in two requests. Returns "success"; "failed" when the service could not be reached or does not know the
  /// subdomain; otherwise the service's refusal, its answer's text unchanged. Throws std::runtime_error or
  /// std::out_of_range (from the JSON library) when an answer is not the expected JSON, for instance a captive
  /// portal's page.
  std::string login(std::string subdomain, std::string username, std::string password);

  /// The projects that the user may upload to. Returns the service's answer (JSON text), or "error".
  std::string getProjectList();

  /// The top-level folders of a project. Returns as getProjectList().
  std::string getFolders(std::string projectId);

  /// The folders directly inside a folder. Returns as getProjectList().
  std::string getSubfolders(std::string projectId, std::string folderId);

  /// Uploads the file at filePath into the project g_prj and the folder g_fld; project and folder are not used.
  /// Returns as getProjectList(). [upload-queue]
  std::string uploadFile(std::string project, std::string folder, std::string filePath);

  /// The number of the newest release of the plug-in as the web site gives it, not trimmed, or "error".
  std::string versionCheck();

 private:
  HttpRequest http;
  std::string authKey;
  std::string authToken;
  std::string username;
  std::string password;
  std::string subdomain;
  std::string apiBaseUrl;
};
