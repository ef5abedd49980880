// The tab "Banned Names": what its buttons do.
#pragma once

void cmdAddName_MouseUp();
void cmdRemoveName_MouseUp();
void cmdSearchName_MouseUp();
