// What the window shows of the edition that is running. Fixed when the program starts.
#pragma once

#include "sigdb/SignatureTables.h"
#include "util/Text.h"

namespace norvo {

struct EditionPresentation {
  Text APP_LONG_NAME;                  // window titles
  Text Rec_Folder_Name;                // the results folder's name
  SignatureFileNames signature_files;  // which search types exist
  bool hides_search_types = false;     // photo searches only, without a choice
  Text raw_file_choice_title;          // of the raw-file choice; empty where the usual one stands

  // The addresses of the contact dialog.
  Text support_address;       // a mailbox
  Text reseller_address;      // a mailbox
  Text support_with_content;  // the complete "mailto:" address of a question to the support
  Text web_address;
  Text web_address_2;
};

}  // namespace norvo
