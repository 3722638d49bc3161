#pragma once
// The menu tree of the main frame and its toolbar, as data: one row per item with its object name,
// caption and parent, in the order the items stand on the menu. The frame builds its menus from
// this table and nothing else, so that names and captions can be checked against one list.

#include <QString>
#include <QStringList>
#include <vector>

namespace vesk {

struct MenuItemDef {
    const char* name;    // object name of the item (the program's established name)
    const char* caption; // caption as shown, "&" before the accelerator
    const char* parent;  // object name of the parent item; "" for the menu bar
};

// Every item of the menu bar, parents before their children, in menu order.
const std::vector<MenuItemDef>& menuTree();

// The row of `name`, or nullptr.
const MenuItemDef* findMenuItem(const QString& name);

// The object names of the items below `name` (children only, in menu order).
QStringList menuChildren(const QString& name);

// True when `name` has children (a submenu rather than a command).
bool isSubmenu(const QString& name);

// All object names of the tree, in menu order.
QStringList allMenuItems();

// The chain of parents of `name`, nearest first, up to the menu bar.
QStringList menuAncestors(const QString& name);

// Toolbar1: five buttons, numbered 1 to 5, with their keys (which are also their texts).
struct ToolbarButtonDef {
    int index;       // 1-based, as the chain's lists count them
    const char* key; // "Setup", "Open File", "Dictionaries", "Close Database", "Exit"
};
const std::vector<ToolbarButtonDef>& toolbarButtons();

// Object name of toolbar button `index` (1..5): "Toolbar1_Button1" and so on.
QString toolbarButtonName(int index);

// The object names of every switchable element: the menu tree and the five toolbar buttons.
QStringList allSwitchableItems();

} // namespace vesk
