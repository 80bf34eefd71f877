// Gives the selected fixtures the same density. Cancel changes nothing.
fixture[]@ fixtures = sf();
float density = queryNumericValue("Density for the selected fixtures:", -1);
if (density >= 0)
    for (uint i = 0; i < fixtures.length(); i++)
        fixtures[i].setDensity(density);
