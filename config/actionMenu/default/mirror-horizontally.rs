// Mirrors the selected bodies left to right about their common centre
// (pivot mode 1: the centre of all the items given).
scale(sb(), 1, -1, 1);
