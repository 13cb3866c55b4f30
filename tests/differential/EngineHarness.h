// The engine, run on the same stand-in drive and destination as the plain search.
#pragma once

#include "../plain/PlainSearch.h"

// Runs the real worker on `search` in a fresh place and answers what it left behind in the terms of
// `plain::Outcome`: paths begin with `search.destination` wherever the files really are, and what
// `existing_files` and `existing_folders` name is there beforehand. Pauses are not waited for.
// `sector_writes_until_full` is never set by the differential tests.
// `with_helper`: a second thread helps reading.
plain::Outcome run_engine(const plain::Search& search, bool with_helper = false);
