// Gives every fixture of the scene the same density. Cancel changes nothing.
float density = queryNumericValue("Density for every fixture:", -1);
if (density >= 0) {
    fixture[]@ fixtures = af();
    for (uint i = 0; i < fixtures.length(); i++)
        fixtures[i].setDensity(density);
    print("Density " + density + " set on " + fixtures.length() + " fixtures");
}
