// The exact small calculators of a draw. Derivation of the history and the filters of a run call the same ones, so a stored
// value and a candidate's value of one attribute can never differ.
//
// None holds state, none changes its arguments. A number outside 1..11 throws NumberFault where a table is indexed by
// number; a previous draw may also hold 0, which stands for "no earlier draw".
#pragma once

#include "model/numbers.h"

namespace elevenfive {

/// 跨度: the largest absolute difference of any two of the five numbers, in any order.
int calc_KuaDu(const Draw& draw);

/// 最大间距: the largest absolute difference of neighbours in the order of the array; a draw is stored ascending.
int calc_JianJuMax(const Draw& draw);

/// AC值 (arithmetic complexity): how many different absolute differences the ten pairs have, less 4.
/// Five different numbers give 0 to 6.
int calc_AC(const Draw& draw);

/// 连号: code 0..6 of the runs of consecutive numbers: none, 2, 2+2, 3, 3+2, 4, 5.
int calc_LianHaoMax(const Draw& draw);

/// 重叠号: how many numbers of draw stand in previous too.
int calc_CongDie(const Draw& previous, const Draw& draw);

/// 斜位码: how many numbers of draw have a direct neighbour in previous; each counts at most once. A previous draw of zeros
/// makes 01 count, since 0 is its neighbour.
int calc_XieWeiMa(const Draw& previous, const Draw& draw);

/// The number of ways to fill k places from n numbers of which d are fixed: C(n - d, k - d). 0 where n < k; 1 where n = k
/// or d >= k.
int calc_Zhushu(int n, int k, int d);

}  // namespace elevenfive
