# GNUstep takes a system font's size as undefined where an interface file leaves it out, and knows no bold one; both are
# named here, in the free font that has the metrics of the windows' own.
s/<font key="([a-zA-Z]+)" metaFont="(smallSystemBold|systemBold|titleBarSmall)" size="([0-9.]+)"\/>/<font key="\1" size="\3" name="LiberationSans-Bold"\/>/g
s/<font key="([a-zA-Z]+)" metaFont="[a-zA-Z]+" size="([0-9.]+)"\/>/<font key="\1" size="\2" name="LiberationSans"\/>/g
s/name="HelveticaNeue-Bold"/name="LiberationSans-Bold"/g
s/name="(HelveticaNeue|Helvetica|LucidaGrande)"/name="LiberationSans"/g

# GCC's runtime knows classes by the names that the sources give them, without the prefix.
s/customClass="Orv([A-Z][A-Za-z]*)"/customClass="\1"/g
