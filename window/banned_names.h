// The tab "Banned Names": what its buttons do.
#pragma once

void AddTypedName();
void RemoveSelectedName();
void SearchNames();
