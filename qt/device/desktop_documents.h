#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/documents.h"
#include "platform/queues.h"

class QObject;

namespace fleetor {

/// Documents on a desktop. Its file chooser portal asks the user for the place; without one the file goes
/// into the folder for documents. Nothing waits for the portal: when it is silent for ten seconds there is
/// none. Main thread only, except for `pdfOf`.
class DesktopDocuments final : public Documents {
 public:
  using Printer = std::function<std::string(const Page& page)>;

  /// `folder` is the one for documents; it is made when it is first needed. The queues outlive this object.
  DesktopDocuments(Queues& queues, std::string folder, Printer printer);
  ~DesktopDocuments() override;

  void save(NewDocument document, Done done) override;
  std::string pdfOf(const Page& page) const override { return printer_(page); }

 private:
  void write(NewDocument document, std::string path, bool replace, Done done);
  void saveInFolder(NewDocument document, Done done);

  Queues& queues_;
  std::string folder_;
  Printer printer_;
  std::unique_ptr<QObject> questions_;  ///< the parent of those that are open
};

}  // namespace fleetor
