// The form frmSource, 数据源: the addresses that are configuration, what each is for, and whether it answers.
#pragma once

class QWidget;

namespace elevenfive {

class AddressTester;
class Boxes;
class Store;

/// Modal over its parent. 确定 stores what was changed, all of it or nothing; an address that is no web address keeps the form
/// open.
void sourceForm(Store& store, Boxes& boxes, AddressTester& tester, QWidget* parent);

}  // namespace elevenfive
