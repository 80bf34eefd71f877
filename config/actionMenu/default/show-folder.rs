// Scripts of an action menu find the files beside them through this folder.
string folder = getCurrentActionMenuFolder();
print("This action menu lives in " + folder);
if (fileExists(folder + "/layout.json"))
    print("Its layout is " + folder + "/layout.json");
