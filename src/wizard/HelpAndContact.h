// The help file and the contact dialog. Main thread.
#pragma once

#include <filesystem>
#include <string_view>

#include "wizard/Desktop.h"
#include "wizard/EditionPresentation.h"
#include "wizard/MessageBoxes.h"
#include "wizard/Notices.h"

namespace norvo {

class HelpAndContact {
 public:
  // What is referred to outlives it. `help_file` is the "Help.pdf" of the resource folder.
  struct Setting {
    Notices& notices;
    Desktop& desktop;
    AlertPanel& panel;
    MessageBoxes& boxes;
    const EditionPresentation& edition;
    std::filesystem::path help_file;
  };
  explicit HelpAndContact(const Setting& setting) : setting_(setting) {}

  // Opens the help file with the person's viewer, or says that there is no such file or viewer.
  void Help_btn();

  // Opens the contact dialog.
  void Contact_Us_btn() { setting_.notices.run_Help_Support(); }

  // A button of the contact dialog or of the notice after a search, by its name: "Copy_Email",
  // "Copy_URL", "Copy_URL_2", "Open_Support_Mail", "Open_Reseller_Mail", or "Open_Page_1" to
  // "Open_Page_4": the program's page, the edition's, its help and its order page. What cannot be
  // opened is told. Other names do nothing.
  void contact_clicked(std::string_view name);

 private:
  void copy(TextView text);

  Setting setting_;
};

}  // namespace norvo
