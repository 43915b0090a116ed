// The tag entry control.
#pragma once

#import <Cocoa/Cocoa.h>

#include "RuntimeName.h"

@class RoundedView;
@class TagButton;
@class TagsPage;

ORV_RUNTIME_NAME("OrvTagsViewDelegate")
@protocol TagsViewDelegate <NSObject>
@optional
/// A row of chips has been added or removed.
- (void)tagsViewDidChangeFrame;
@end

/// A text field for a new tag and a chip for every tag, in rows below the field. The i-th string of tags is the title
/// of the i-th chip. The view never changes its own size. The field need not be inside of it: it stands still while the
/// chips scroll. In the order of the Tab key the chips follow the view, which
/// does not take the keyboard itself. [main-thread]
ORV_RUNTIME_NAME("OrvTagsView")
@interface TagsView : NSView {
  id<TagsViewDelegate> _delegate;
  NSTextField *_titleTextField;
  NSTextField *_tagTextField;
  NSButton *_addButton;
  TagsPage *_page;
  RoundedView *_tagTextFieldBackground;
  NSMutableArray *_tagButtons;
  NSMutableArray *_tags;
  NSView *_keyViewAfterChips;  // not owned
  BOOL _willRefresh;           // all chips are about to be placed anew
}

/// Not owned.
@property(nonatomic, assign) id<TagsViewDelegate> delegate;

/// Views of the interface file, owned by their superviews.
@property(nonatomic, assign) IBOutlet NSTextField *titleTextField;
@property(nonatomic, assign) IBOutlet NSTextField *tagTextField;
@property(nonatomic, assign) IBOutlet NSButton *addButton;

/// The page in which this view scrolls, fitted to the chips whenever they are made anew, and scrolled to a tag that is
/// added; nil where nothing scrolls.
@property(nonatomic, assign) IBOutlet TagsPage *page;

/// The layout's anchor: by its frame's y, the first row of chips stands below it.
@property(nonatomic, assign) IBOutlet RoundedView *tagTextFieldBackground;

/// The chips, in display order.
@property(nonatomic, retain) NSMutableArray *tagButtons;

/// The tags' texts. Setting the list does not lay out again.
@property(nonatomic, retain) NSMutableArray *tags;

/// Adds the typed tag, without the white space around it.
- (IBAction)addTagsButtonDidTouch:(id)sender;

/// The chips' action: deletes the chip's tag, and every tag of the same text.
- (IBAction)deleteTagButton:(id)sender;

/// The same without laying out again.
- (void)deleteTagButtonWithoutRefresh:(TagButton *)tagButton;

/// Places the chips from that index on.
- (void)refreshTagButtonFramesFromIndex:(NSUInteger)index;

/// Move all chips by a row and tell the delegate.
- (void)addNewRow;
- (void)removeRow;

/// Removes all tags and the typed text.
- (void)clearView;

/// Makes all chips anew from tags. Empties the text field.
- (void)redrawAllTagButtons;

@end
