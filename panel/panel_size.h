// panel_size.h -- how many panels a panel's widgets repeat. A panel named
// once and referred to in several places ("$p") is drawn in each, so a
// chain of shared sub-panels doubles the script at every level: counting
// first lets such a panel be refused before any script is written.
#ifndef PANEL_PANEL_SIZE_H
#define PANEL_PANEL_SIZE_H

class Panel;

// The number of panels drawn for `top` (every form, box, pop-up and leaf, as
// often as it is drawn), or `limit` + 1 when there are more than `limit`.
// Linear in the number of distinct panels.
long drawn_panels(Panel* top, long limit);

#endif
