// Mirrors the selected bodies top to bottom about their common centre.
scale(sb(), 1, 1, -1);
