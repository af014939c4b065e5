#include "model/json_model_error.h"

namespace fleetor {

namespace {
JSONModelError withText(JSONModelErrorCode code, std::string description) {
  JSONModelError error;
  error.code = code;
  error.description = std::move(description);
  return error;
}
}  // namespace

JSONModelError JSONModelError::invalidData(std::string_view message) {
  return withText(JSONModelErrorCode::invalidData, "Invalid JSON data: " + std::string(message));
}

JSONModelError JSONModelError::invalidDataWithMissingKeys(std::vector<std::string> names) {
  auto error =
      withText(JSONModelErrorCode::invalidData,
               "Invalid JSON data. Required JSON keys are missing from the input. Check the error user "
               "information.");
  error.kJSONModelMissingKeys = std::move(names);
  return error;
}

JSONModelError JSONModelError::invalidDataWithTypeMismatch(std::string mismatch) {
  auto error = withText(JSONModelErrorCode::invalidData,
                        "Invalid JSON data. The JSON type mismatches the expected type. Check the error user "
                        "information.");
  error.kJSONModelTypeMismatch = std::move(mismatch);
  return error;
}

JSONModelError JSONModelError::badResponse() {
  return withText(JSONModelErrorCode::badResponse,
                  "Bad network response. Probably the JSON URL is unreachable.");
}

JSONModelError JSONModelError::badJSON() {
  return withText(JSONModelErrorCode::badJSON, "Malformed JSON. Check the JSONModel data input.");
}

JSONModelError JSONModelError::modelIsInvalid() {
  return withText(JSONModelErrorCode::modelIsInvalid,
                  "Model does not validate. The custom validation for the input data failed.");
}

JSONModelError JSONModelError::inputIsNil() {
  return withText(JSONModelErrorCode::nilInput, "Initializing model with nil input object.");
}

void JSONModelError::prependKeyPathComponent(std::string_view component) {
  std::string path(component);
  if (kJSONModelKeyPath && !kJSONModelKeyPath->empty()) {
    if (kJSONModelKeyPath->front() != '[') path += '.';
    path += *kJSONModelKeyPath;
  }
  kJSONModelKeyPath = std::move(path);
}

void JSONModelError::prependKeyPathIndex(std::size_t index) {
  prependKeyPathComponent("[" + std::to_string(index) + "]");
}

}  // namespace fleetor
