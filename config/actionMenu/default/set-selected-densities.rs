// Gives the selected fixtures the same density.
fixture[]@ fixtures = sf();
float density = queryNumericValue("Density for the selected fixtures:", fixtures[0].getDensity());
if (density >= 0)
    for (uint i = 0; i < fixtures.length(); i++)
        fixtures[i].setDensity(density);
