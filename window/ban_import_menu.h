// The menu of the ban lists: import of another tool's ban file.
#pragma once

// Asks for a file and adds its entries to the lists of the shown profile. Ends without a word on any failure;
// a link that cannot be written is reported.
void mnuMerrow300_Click();
