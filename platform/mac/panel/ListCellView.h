#pragma once

#import <AppKit/AppKit.h>

#include "platform/ListView.h"

// One row of a list: a title over a subtitle. Flipped.
@interface ListCellView : NSTableCellView

- (instancetype)initWithStyle:(const pellar::ListStyle&)style;
- (void)showRow:(const pellar::ListRow&)row;

@end
