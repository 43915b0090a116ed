#include "CurlProgram.h"

#include <chrono>
#include <stdexcept>

#include "WorkflowState.h"

namespace bench {

std::vector<std::string> CurlUploadArguments(const SinkProcess& sink) {
  std::vector<std::string> arguments = {"curl", "--disable", "--silent", "--show-error", "--output", "/dev/null"};
  const auto add = [&arguments](const std::string& option, const std::string& value) {
    arguments.push_back(option);
    arguments.push_back(value);
  };
  add("--cacert", sink.AuthorityFile());
  add("--connect-to", "::127.0.0.1:" + std::to_string(sink.port()));
  add("--form", "Filedata=@" + g_fpath);
  add("--form-string", "auth_token=token");
  add("--form-string", "auth_key=key");
  add("--form-string", "folder_id=" + g_fld);
  add("--form-string", "title=" + g_title);
  if (!g_desc.empty()) add("--form-string", "description=" + g_desc);
  for (const std::string& tag : g_tags) add("--form-string", "tags_array[]=" + tag);
  arguments.push_back(ApiUrl("upload_file/" + g_prj));
  return arguments;
}

double UploadWithCurl(const SinkProcess& sink) {
  const std::vector<std::string> arguments = CurlUploadArguments(sink);
  const auto begin = std::chrono::steady_clock::now();
  const orvane_host::ChildResult result = orvane_host::RunChild(arguments);
  const std::chrono::duration<double> whole = std::chrono::steady_clock::now() - begin;
  if (result.status != 0) throw std::runtime_error("curl failed: " + result.errors);
  return whole.count();
}

}  // namespace bench
