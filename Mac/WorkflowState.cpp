#include "WorkflowState.h"

std::string g_sd;
std::string g_un;
std::string g_pw;
std::string g_step;
std::string g_prj;
std::string g_fld;
std::string g_fpath;
std::string g_title;
std::string g_desc;
std::vector<std::string> g_tags;

void (*g_pUpdFunc)(double total, double now) = nullptr;
void (*g_pCompleteFunc)(std::string link) = nullptr;
void (*g_pCleanupFunc)() = nullptr;
void (*g_pFailureFunc)(const std::string& message) = nullptr;

OrvaneUI* simUiPtr = nullptr;

void SetLoggedIn(const std::string& subdomain, const std::string& username, const std::string& password) {
  g_sd = subdomain;
  g_un = username;
  g_pw = password;
  g_step = "upload";
}
